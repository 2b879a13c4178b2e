#include "Host/Doctor/LandlockCheck.h"

#include <fmt/format.h>

namespace host {

Finding checkLandlock(int version) {
    constexpr int firstWithTcp = 4;
    constexpr int firstWithSignals = 6;
    if (version <= 0) {
        return {.name = "Landlock",
                .state = Finding::State::note,
                .what = "the kernel has none: extensions may read every file that you may",
                .advice = "boot Linux 5.13 or later, with landlock among its security modules (lsm=)"};
    }
    return {.name = "Landlock",
            .what =
                fmt::format("version {}: confines extensions in files{}{}", version,
                            version >= firstWithTcp ? ", TCP" : "", version >= firstWithSignals ? ", signals" : "")};
}

} // namespace host
