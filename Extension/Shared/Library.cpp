#include "Extension/Shared/Library.h"

#include "Extension/Shared/ExtensionIdentity.h"

namespace foliovault {

const Library& Library::shared() {
    static const Library library{FOLIOvaultPaths::shared(), platform::DiskFileSystem::shared(), extensionLog()};
    return library;
}

} // namespace foliovault
