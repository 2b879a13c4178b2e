#include "Host/Desktop/Examples.h"

#include "Host/Connection/UserFolders.h"
#include "Platform/Foundation/Localization.h"
#include "Platform/Foundation/SharedFolder.h"

#include <fmt/format.h>

namespace host {

namespace fs = std::filesystem;

std::optional<std::string> libraryNotice(const std::vector<fs::path>& missing) {
    if (missing.empty()) {
        return std::nullopt;
    }
    std::string notice = platform::localized("There is no library yet. It is looked for here:");
    for (const fs::path& folder : missing) {
        notice += "\n" + folder.string();
    }
    return notice;
}

std::optional<fs::path> examplesFolder() {
    const fs::path folder = fs::path(platform::sharedFolder()) / "widgethost" / "examples";
    std::error_code failure;
    return fs::is_directory(folder, failure) ? std::optional(folder) : std::nullopt;
}

platform::Expected<fs::path, std::string> copyExamples() {
    const auto source = examplesFolder();
    const fs::path copy = userDataFolder() / "widgethost" / "examples";
    if (!source || !copy.is_absolute()) {
        return platform::Unexpected{std::string("there are no examples, or there is no place for them")};
    }
    std::error_code failure;
    fs::remove_all(copy, failure);
    if (!failure) {
        fs::create_directories(copy.parent_path(), failure);
    }
    if (!failure) {
        fs::copy(*source, copy, fs::copy_options::recursive, failure);
    }
    if (failure) {
        return platform::Unexpected{
            fmt::format("cannot copy the examples to {}: {}", copy.string(), failure.message())};
    }
    return copy;
}

} // namespace host
