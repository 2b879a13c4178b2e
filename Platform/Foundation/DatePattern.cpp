#include "Platform/Foundation/DatePattern.h"

#include "Platform/Foundation/DatePatternTable.h"
#include "Platform/Foundation/TextFields.h"

#include <string>

namespace platform {
namespace {

/// The line of the table for exactly this locale, without its name; empty where there is none.
std::string_view lineOf(std::string_view locale) {
    const std::string_view table = datePatternTable;
    const std::string head = "\n" + std::string(locale) + "\t";
    const std::size_t found = table.find(head);
    if (found == std::string_view::npos) {
        return {};
    }
    const std::string_view rest = table.substr(found + head.size());
    return rest.substr(0, rest.find('\n'));
}

} // namespace

DatePattern datePatternOf(std::string_view locale) {
    std::string_view line = lineOf(locale);
    while (line.empty()) {
        const std::size_t end = locale.rfind('_');
        locale = end == std::string_view::npos ? "en" : locale.substr(0, end);
        line = lineOf(locale);
    }
    DatePattern pattern;
    pattern.calendar = nextField(line, '\t');
    pattern.zero = nextField(line, '\t');
    pattern.text = nextField(line, '\t');
    pattern.monthNames = line;
    return pattern;
}

} // namespace platform
