#include "Host/Desktop/Examples.h"

#include "Host/Connection/UserFolders.h"
#include "Platform/Foundation/Localization.h"
#include "Platform/Foundation/ProgramFolder.h"

#include <fmt/format.h>

namespace host {

namespace fs = std::filesystem;
using platform::localized;

StatusMessage noLibraryMessage(const std::vector<fs::path>& missing) {
    std::string note = localized("It is looked for here:");
    for (const fs::path& folder : missing) {
        note += "\n" + folder.string();
    }
    return {.symbol = "archivebox",
            .title = localized("There is no library yet."),
            .note = note,
            .button = examplesFolder() ? localized("Show Examples") : ""};
}

std::optional<fs::path> examplesFolder() {
    const fs::path folder = fs::path(platform::sharedFolder()) / "widgethost" / "examples";
    std::error_code failure;
    return fs::is_directory(folder, failure) ? std::optional(folder) : std::nullopt;
}

fs::path examplesHome() {
    return userDataFolder() / "widgethost" / "examples";
}

platform::Expected<fs::path, std::string> copyExamples() {
    const auto source = examplesFolder();
    const fs::path copy = examplesHome();
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
