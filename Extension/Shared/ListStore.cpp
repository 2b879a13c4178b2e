#include "Extension/Shared/ListStore.h"

#include "Extension/Shared/ExtensionIdentity.h"

namespace foliovault {

using namespace platform;

const Library& Library::shared() {
    static const Library library{FOLIOvaultPaths::shared(), DiskFileSystem::shared(), extensionLog()};
    return library;
}

std::optional<PropertyList> LibraryFile::loadPlist() const {
    const std::string name = path_.substr(path_.rfind('/') + 1);
    const auto file = library_->files.read(path_);
    if (!file) {
        library_->log.write(LogLevel::debug, category_, "Could not read " + name);
        return std::nullopt;
    }
    auto list = PropertyList::parse(*file);
    if (!list || !list->root().isArrayOfDictionaries()) {
        library_->log.write(LogLevel::error, category_, "Could not parse " + name);
        return std::nullopt;
    }
    return list;
}

std::vector<std::string> LibraryFile::watches() const {
    return {path_.substr(path_.find_first_not_of('/', realHome().size()))};
}

} // namespace foliovault
