// Reads any file as a tips cache. A valid one is the same after writing and reading.

#include "Extension/Tips/TipsCache.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto cache = foliovault::decodedCache({reinterpret_cast<const char*>(data), size});
    if (cache) {
        const auto again = foliovault::decodedCache(foliovault::encoded(*cache));
        if (!again || again->timestamp != cache->timestamp || again->tips != cache->tips) {
            std::abort();
        }
    }
    return 0;
}
