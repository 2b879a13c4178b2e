#include "Host/Commands/DoctorReport.h"

#include "Host/Commands/Output.h"
#include "Platform/Foundation/JsonWriter.h"

#include <fmt/format.h>

#include <algorithm>
#include <string_view>

namespace host {
namespace {

using State = Finding::State;

struct StateWords {
    std::string_view json;
    std::string_view text;
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

std::string counted(const Findings& findings, State state) {
    const auto count =
        std::count_if(findings.begin(), findings.end(), [&](const Finding& each) { return each.state == state; });
    return fmt::format("{} {}{}", count, wordsOf(state).json, count == 1 ? "" : "s");
}

} // namespace

std::string doctorReport(const Findings& findings, Colouring colouring) {
    const bool isColoured = colouring == Colouring::colours;
    std::string report;
    for (const Finding& finding : findings) {
        const StateWords words = wordsOf(finding.state);
        report += fmt::format("{}{:<7}{}  {:<14}  {}\n", isColoured ? words.colour : "", words.text,
                              isColoured ? "\x1B[0m" : "", finding.name, printable(finding.what));
        if (!finding.fix.empty()) {
            report += fmt::format("{:25}→ {}\n", "", printable(finding.fix));
        }
    }
    return fmt::format("{}\n{}, {}.\n", report, counted(findings, State::problem), counted(findings, State::note));
}

std::string doctorJson(const Findings& findings) {
    std::string json;
    platform::JsonWriter out(json);
    out.beginArray();
    for (const Finding& finding : findings) {
        out.beginObject().member("check", finding.name).member("state", wordsOf(finding.state).json);
        out.member("found", finding.what).member("advice", finding.fix).endObject();
    }
    out.endArray();
    return json + '\n';
}

} // namespace host
