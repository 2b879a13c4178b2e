#include "Host/Desktop/Studio.h"

#include "Host/Drawing/FontRelease.h"

#include <malloc.h>

namespace host {
namespace {

/// As long after the last picture: another often follows.
constexpr guint openMilliseconds = 2000;

} // namespace

Renderer& Studio::renderer() {
    closing_.after<&Studio::close>(openMilliseconds, this);
    return renderer_ ? *renderer_ : renderer_.emplace();
}

void Studio::close() {
    renderer_.reset();
    releaseUnusedFonts();
    malloc_trim(0);
}

} // namespace host
