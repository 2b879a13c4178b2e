#include "Host/Commands/DoctorReport.h"

#include "Host/Commands/TerminalText.h"
#include "Platform/Foundation/JsonWriter.h"

#include <fmt/format.h>

#include <algorithm>
#include <string_view>

namespace host {
namespace {

using State = Finding::State;

constexpr std::size_t lineLength = 100;
constexpr std::size_t stateLength = 7;
constexpr std::string_view gap = "  ";

struct StateWords {
    std::string_view json;
    std::string_view people;
    std::string_view colour;
};

StateWords wordsOf(State state) {
    switch (state) {
    case State::note:
        return {"note", "note", "\x1B[33m"};
    case State::problem:
        return {"problem", "PROBLEM", "\x1B[1;31m"};
    case State::ok:
        break;
    }
    return {"ok", "ok", "\x1B[32m"};
}

/// Adds `text`, broken between words, where a line has begun that is `indent` columns long.
void addWrapped(std::string& out, std::string_view text, std::size_t indent) {
    std::size_t column = indent;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find(' '), text.size());
        const std::string_view word = text.substr(0, end);
        if (column > indent && column + 1 + columnsOf(word) > lineLength) {
            out.append("\n").append(indent, ' ');
            column = indent;
        } else if (column > indent) {
            out += ' ';
            ++column;
        }
        out += word;
        column += columnsOf(word);
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    out += '\n';
}

std::string counted(const Findings& findings) {
    const auto count = [&](State state) {
        return std::count_if(findings.begin(), findings.end(),
                             [&](const Finding& each) { return each.state == state; });
    };
    const auto problems = count(State::problem);
    const auto notes = count(State::note);
    return fmt::format("{} problem{}, {} note{}.\n", problems, problems == 1 ? "" : "s", notes, notes == 1 ? "" : "s");
}

} // namespace

std::string doctorReport(const Findings& findings, Colouring colouring) {
    std::size_t nameLength = 0;
    for (const Finding& finding : findings) {
        nameLength = std::max(nameLength, columnsOf(finding.name));
    }
    const std::size_t indent = stateLength + gap.size() + nameLength + gap.size();
    std::string report;
    for (const Finding& finding : findings) {
        const StateWords words = wordsOf(finding.state);
        const bool coloured = colouring == Colouring::colours;
        report.append(coloured ? words.colour : "").append(words.people).append(coloured ? "\x1B[0m" : "");
        report.append(stateLength - words.people.size(), ' ').append(gap);
        report.append(finding.name).append(nameLength - columnsOf(finding.name), ' ').append(gap);
        addWrapped(report, printable(finding.what), indent);
        if (!finding.advice.empty()) {
            constexpr std::string_view arrow = "→ ";
            report.append(indent, ' ').append(arrow);
            addWrapped(report, printable(finding.advice), indent + columnsOf(arrow));
        }
    }
    return report + '\n' + counted(findings);
}

std::string doctorJson(const Findings& findings) {
    std::string json;
    platform::JsonWriter out(json);
    out.beginArray();
    for (const Finding& finding : findings) {
        out.beginObject().member("check", finding.name).member("state", wordsOf(finding.state).json);
        out.member("found", finding.what).member("advice", finding.advice).endObject();
    }
    out.endArray();
    return json + '\n';
}

} // namespace host
