#include "Host/Commands/ArrangementCheck.h"

#include "Host/Arrangement/ArrangementFile.h"

#include <fmt/format.h>

namespace host {

Finding checkArrangement(const std::filesystem::path& folder) {
    constexpr const char* name = "arrangement";
    const auto arrangement = ArrangementFile(platform::DiskFileSystem::shared(), folder).load();
    if (!arrangement) {
        return Finding::problem(name, arrangement.error().message,
                                "mend the file or move it away; one of a newer program is for that program");
    }
    const std::size_t count = arrangement->instances.size();
    if (count == 0) {
        return Finding::note(name, "no widget is placed", "place one with widgethost add KIND");
    }
    return Finding::ok(name, fmt::format("{} {} placed", count, count == 1 ? "widget is" : "widgets are"));
}

} // namespace host
