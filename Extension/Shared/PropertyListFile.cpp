#include "Extension/Shared/PropertyListFile.h"

namespace foliovault {

using namespace platform;

std::vector<std::string> PropertyListFile::watches() const {
    return {path_.substr(path_.find_first_not_of('/', home_.size()))};
}

std::optional<PropertyList> PropertyListFile::load() const {
    const std::string name = path_.substr(path_.rfind('/') + 1);
    const auto file = files_.read(path_);
    if (!file) {
        log_.write(LogLevel::debug, category_, "Could not read " + name);
        return std::nullopt;
    }
    auto list = PropertyList::parse(*file);
    if (!list || !list->root().isArrayOfDictionaries()) {
        log_.write(LogLevel::error, category_, "Could not parse " + name);
        return std::nullopt;
    }
    return list;
}

} // namespace foliovault
