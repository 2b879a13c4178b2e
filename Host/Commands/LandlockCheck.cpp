#include "Host/Commands/LandlockCheck.h"

#include <fmt/format.h>

namespace host {

Finding checkLandlock(int version) {
    constexpr int firstWithTcp = 4;
    constexpr int firstWithSignals = 6;
    if (version <= 0) {
        return Finding::note("Landlock", "the kernel has none: extensions may read every file that you may",
                             "boot Linux 5.13 or later, with landlock among its security modules (lsm=)");
    }
    return Finding::ok("Landlock", fmt::format("version {}: confines extensions in files{}{}", version,
                                               version >= firstWithTcp ? ", TCP" : "",
                                               version >= firstWithSignals ? ", signals" : ""));
}

} // namespace host
