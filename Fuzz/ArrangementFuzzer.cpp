// Reads any file as an arrangement. A valid one is the same after writing and reading, and accepts another widget if
// there is room.

#include "Host/Arrangement/ArrangementJson.h"

#include <cstdint>
#include <cstdlib>

namespace {

void requireReadAgain(const host::Arrangement& arrangement) {
    const std::string json = host::arrangementJson(arrangement);
    const auto again = host::arrangementFromJson(json);
    if (json.size() <= host::maxArrangementFileSize && (!again || !(*again == arrangement))) {
        std::abort();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto arrangement = host::arrangementFromJson({reinterpret_cast<const char*>(data), size});
    if (!arrangement) {
        return 0;
    }
    requireReadAgain(*arrangement);
    const auto larger = host::applied(
        *arrangement, host::Addition{{.extension = "e", .kind = "k", .family = "f", .position = host::Position{}}});
    if (larger) {
        requireReadAgain(*larger);
    }
    return 0;
}
