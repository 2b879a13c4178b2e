#include "Host/Commands/ArrangementTable.h"

#include "Host/Commands/TerminalText.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <vector>

namespace host {
namespace {

using Row = std::array<std::string, 5>;

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
    std::vector<Row> rows{{"ID", "KIND", "FAMILY", "SETTINGS", "PLACE"}};
    for (const Instance& instance : arrangement.instances) {
        rows.push_back({std::to_string(instance.id), printable(instance.kind), printable(instance.family),
                        printable(settingsOf(instance)), printable(placeOf(instance))});
    }
    std::array<std::size_t, std::tuple_size_v<Row>> widths{};
    for (const Row& row : rows) {
        for (std::size_t column = 0; column < row.size(); ++column) {
            widths[column] = std::max(widths[column], columnsOf(row[column]));
        }
    }
    std::string table;
    for (const Row& row : rows) {
        std::string line;
        for (std::size_t column = 0; column < row.size(); ++column) {
            line += row[column] + std::string(widths[column] + 2 - columnsOf(row[column]), ' ');
        }
        table += line.erase(line.find_last_not_of(' ') + 1) + '\n';
    }
    return table;
}

} // namespace host
