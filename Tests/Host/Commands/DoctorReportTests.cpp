#include "Host/Commands/DoctorReport.h"
#include "Host/Commands/TerminalText.h"

#include <gmock/gmock.h>

#include <sstream>

namespace host {
namespace {

using State = Finding::State;

std::vector<std::string> lines(const std::string& text) {
    std::istringstream in(text);
    std::vector<std::string> all;
    for (std::string line; std::getline(in, line);) {
        all.push_back(line);
    }
    return all;
}

TEST(DoctorReport, StandsInColumnsWithTheAdviceBelow) {
    const Findings findings{{.name = "font, Größe", .what = "Inter"},
                            {.name = "bus", .state = State::note, .what = "there is none", .advice = "log in"},
                            {.name = "data", .state = State::problem, .what = "a\n\x1B[2Jb", .advice = "mend it"}};
    EXPECT_EQ(doctorReport(findings, Colouring::plain), "ok       font, Größe  Inter\n"
                                                        "note     bus          there is none\n"
                                                        "                      → log in\n"
                                                        "PROBLEM  data         a  [2Jb\n"
                                                        "                      → mend it\n"
                                                        "\n1 problem, 1 note.\n");
}

TEST(DoctorReport, BreaksBetweenWordsAndNeverInOne) {
    std::string words;
    for (int i = 0; i < 60; ++i) {
        words += "wört ";
    }
    const std::string path(120, 'p');
    const std::string report = doctorReport(
        {{.name = "data", .state = State::problem, .what = words + path, .advice = words}}, Colouring::plain);
    bool sawPath = false;
    for (const std::string& line : lines(report)) {
        sawPath = sawPath || line == std::string(15, ' ') + path;
        EXPECT_TRUE(columnsOf(line) <= 100 || line.ends_with(path)) << line;
        EXPECT_FALSE(line.ends_with(' ')) << line;
    }
    EXPECT_TRUE(sawPath) << report;
    // 85 columns are left, and seventeen words of five would end in a blank that needs no room.
    EXPECT_EQ(columnsOf(lines(report).front()), 99U);
}

TEST(DoctorReport, HasColoursOnlyWhereTheyAreWanted) {
    const Findings findings{{.name = "data", .what = "there"}};
    EXPECT_EQ(doctorReport(findings, Colouring::colours),
              "\x1B[32mok\x1B[0m       data  there\n\n0 problems, 0 notes.\n");
}

TEST(DoctorReport, IsValidJsonWhateverWasFound) {
    EXPECT_EQ(doctorJson({{.name = "data", .state = State::note, .what = "\"\xFF\"", .advice = "a\nb"}}),
              "[{\"check\":\"data\",\"state\":\"note\",\"found\":\"\\\"\uFFFD\\\"\",\"advice\":\"a\\nb\"}]\n");
    EXPECT_EQ(doctorJson({}), "[]\n");
}

} // namespace
} // namespace host
