#include "Extension/Shared/ExtensionIdentity.h"

namespace foliovault {

const platform::Log& extensionLog() {
    static const platform::SystemLog log(extensionIdentifier);
    return log;
}

} // namespace foliovault
