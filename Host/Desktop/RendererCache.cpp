#include "Host/Desktop/RendererCache.h"

#include <malloc.h>

namespace host {
namespace {

constexpr guint timeoutMilliseconds = 2000;
constexpr int cachedFontCount = 257;

using FontFaceHandle = std::unique_ptr<cairo_font_face_t, Releaser<cairo_font_face_destroy>>;
using ScaledFontHandle = std::unique_ptr<cairo_scaled_font_t, Releaser<cairo_scaled_font_destroy>>;

/// Cairo caches the last scaled font and 256 unused ones, and with them their files. Creating empty user fonts evicts them.
void releaseUnusedFonts() {
    const FontFaceHandle face(cairo_user_font_face_create());
    const FontOptionsHandle options(cairo_font_options_create());
    cairo_matrix_t identity;
    cairo_matrix_init_identity(&identity);
    for (int size = 1; size <= cachedFontCount; ++size) {
        cairo_matrix_t matrix;
        cairo_matrix_init_scale(&matrix, size, size);
        const ScaledFontHandle font(cairo_scaled_font_create(face.get(), &matrix, &identity, options.get()));
    }
}

} // namespace

Renderer& RendererCache::renderer() {
    clearing_.after<&RendererCache::clear>(timeoutMilliseconds, this);
    return renderer_ ? *renderer_ : renderer_.emplace();
}

void RendererCache::clear() {
    renderer_.reset();
    releaseUnusedFonts();
    malloc_trim(0);
}

} // namespace host
