#include "Host/Desktop/RendererCache.h"

#include <malloc.h>

namespace host {
namespace {

constexpr guint timeoutMilliseconds = 2000;

} // namespace

Renderer& RendererCache::renderer() {
    clearing_.after<&RendererCache::clear>(timeoutMilliseconds, this);
    return renderer_ ? *renderer_ : renderer_.emplace();
}

void RendererCache::clear() {
    renderer_.reset();
    malloc_trim(0);
}

} // namespace host
