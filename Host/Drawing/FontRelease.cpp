#include "Host/Drawing/FontRelease.h"

#include "Host/Drawing/Handles.h"

namespace host {
namespace {

constexpr int keptCount = 256;

using FontFaceHandle = std::unique_ptr<cairo_font_face_t, Releaser<cairo_font_face_destroy>>;
using ScaledFontHandle = std::unique_ptr<cairo_scaled_font_t, Releaser<cairo_scaled_font_destroy>>;

} // namespace

void releaseUnusedFonts() {
    const FontFaceHandle face(cairo_user_font_face_create());
    const FontOptionsHandle options(cairo_font_options_create());
    cairo_matrix_t identity;
    cairo_matrix_init_identity(&identity);
    for (int size = 1; size <= keptCount; ++size) {
        cairo_matrix_t matrix;
        cairo_matrix_init_scale(&matrix, size, size);
        const ScaledFontHandle font(cairo_scaled_font_create(face.get(), &matrix, &identity, options.get()));
    }
}

} // namespace host
