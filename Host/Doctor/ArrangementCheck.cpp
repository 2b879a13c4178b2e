#include "Host/Doctor/ArrangementCheck.h"

#include "Host/Arrangement/ArrangementFile.h"

#include <fmt/format.h>

namespace host {

Finding checkArrangement(const std::filesystem::path& folder) {
    Finding finding{.name = "arrangement"};
    const auto arrangement = ArrangementFile(platform::DiskFileSystem::shared(), folder).load();
    if (!arrangement) {
        finding.state = Finding::State::problem;
        finding.what = arrangement.error().message;
        finding.advice = "mend the file or move it away; one of a newer program is for that program";
    } else if (arrangement->instances.empty()) {
        finding.state = Finding::State::note;
        finding.what = "no widget is placed";
        finding.advice = "place one with widgethost add KIND";
    } else {
        const std::size_t count = arrangement->instances.size();
        finding.what = fmt::format("{} {} placed", count, count == 1 ? "widget is" : "widgets are");
    }
    return finding;
}

} // namespace host
