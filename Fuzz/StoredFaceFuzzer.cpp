// Any file as a stored face: what is read as one is as large as it says, and comes back as it was when it is stored and
// read again.

#include "Host/Pictures/StoredFace.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const host::Instance instance{.id = 1, .extension = "e", .kind = "k", .family = "small"};
    const auto face = host::readStoredFace({reinterpret_cast<const char*>(data), size}, instance);
    if (!face) {
        return 0;
    }
    if (face->width <= 0 || face->height <= 0 ||
        face->pixels.size() != static_cast<std::size_t>(face->width) * static_cast<std::size_t>(face->height)) {
        std::abort();
    }
    // Stored, it may be larger than what is read.
    const std::string file = host::storedFace(*face, instance);
    if (!file.empty() && host::readStoredFace(file, instance) != face) {
        std::abort();
    }
    return 0;
}
