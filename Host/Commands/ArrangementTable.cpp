#include "Host/Commands/ArrangementTable.h"

#include "Host/Commands/TerminalText.h"

#include <fmt/format.h>

namespace host {
namespace {

std::string row(std::string_view id, std::string_view kind, std::string_view family, std::string_view settings,
                std::string_view place) {
    std::string line = fmt::format("{:<4}  {:<17}  {:<10}  {:<20}  {}", id, kind, family, settings, place);
    return line.erase(line.find_last_not_of(' ') + 1) + '\n';
}

std::string settingsOf(const Instance& instance) {
    std::string text;
    for (const auto& [name, choice] : instance.configuration) {
        text += fmt::format("{}{}={}", text.empty() ? "" : " ", name, choice);
    }
    return text;
}

std::string placeOf(const Instance& instance) {
    std::string output = instance.output.value_or("");
    if (!instance.position) {
        return output;
    }
    return fmt::format("{}at {},{}", output.empty() ? "" : output + " ", instance.position->x, instance.position->y);
}

} // namespace

std::string arrangementTable(const Arrangement& arrangement) {
    if (arrangement.instances.empty()) {
        return "No widget is placed.\n";
    }
    std::string table = row("ID", "KIND", "FAMILY", "SETTINGS", "PLACE");
    for (const Instance& instance : arrangement.instances) {
        table += row(std::to_string(instance.id), printable(instance.kind), printable(instance.family),
                     printable(settingsOf(instance)), printable(placeOf(instance)));
    }
    return table;
}

} // namespace host
