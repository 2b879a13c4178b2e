#include "Host/Commands/DoctorReport.h"
#include "Host/Commands/LinkSchemes.h"

#include <gtest/gtest.h>

namespace host {
namespace {

using State = Finding::State;

TEST(DoctorReport, StandsInColumnsWithTheAdviceBelow) {
    const Findings findings{{.name = "font, Größe", .what = "Inter"},
                            {.name = "bus", .state = State::note, .what = "there is none", .fix = "log in"},
                            {.name = "data", .state = State::problem, .what = "a\n\x1B[2Jb", .fix = "mend it"}};
    EXPECT_EQ(doctorReport(findings, Colouring::plain), "ok       font, Größe     Inter\n"
                                                        "note     bus             there is none\n"
                                                        "                         → log in\n"
                                                        "PROBLEM  data            a  [2Jb\n"
                                                        "                         → mend it\n"
                                                        "\n1 problem, 1 note.\n");
    EXPECT_EQ(doctorReport({findings.front()}, Colouring::colours),
              "\x1B[32mok     \x1B[0m  font, Größe     Inter\n\n0 problems, 0 notes.\n");
}

TEST(DoctorReport, IsValidJsonWhateverWasFound) {
    EXPECT_EQ(doctorJson({{.name = "data", .state = State::note, .what = "\"\xFF\"", .fix = "a\nb"}}),
              "[{\"check\":\"data\",\"state\":\"note\",\"found\":\"\\\"\uFFFD\\\"\",\"advice\":\"a\\nb\"}]\n");
}

TEST(LinkSchemes, AreWhatStandsBeforeTheColon) {
    struct Row {
        std::string url;
        std::string scheme;
    };
    const std::string longest(63, 'a');
    for (const Row& row :
         {Row{"https://example.org/a:b", "https"}, Row{"HTTPS:", "https"}, Row{"x-Notes+2.0-a:item", "x-notes+2.0-a"},
          Row{"", ""}, Row{":", ""}, Row{"https", ""}, Row{"/a/b:c", ""}, Row{"1password:x", ""}, Row{"-x:y", ""},
          Row{"a b:c", ""}, Row{"schöne:c", ""}, Row{"a\n:c", ""}, Row{std::string("a\0b:c", 5), ""},
          Row{longest + ":x", longest}, Row{longest + "aa:x", ""}}) {
        EXPECT_EQ(schemeOf(row.url), row.scheme) << row.url;
    }
}

} // namespace
} // namespace host
