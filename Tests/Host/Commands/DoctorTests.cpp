#include "Host/Commands/DoctorReport.h"
#include "Host/Commands/SchemeCheck.h"

#include <gtest/gtest.h>

namespace host {
namespace {

using State = Finding::State;

TEST(DoctorReport, StandsInColumnsOrIsValidJson) {
    const Findings findings{{.name = "font, Größe", .what = "Inter"},
                            {.name = "bus", .state = State::note, .what = "there is none", .fix = "log in"},
                            {.name = "data", .state = State::problem, .what = "a\n\x1B[2Jb", .fix = "mend it"}};
    EXPECT_EQ(doctorReport(findings, Colouring::plain), "ok       font, Größe     Inter\n"
                                                        "note     bus             there is none\n"
                                                        "                         → log in\n"
                                                        "PROBLEM  data            a  [2Jb\n"
                                                        "                         → mend it\n"
                                                        "\n1 problem, 1 note.\n");
    EXPECT_EQ(doctorJson({{.name = "data", .state = State::note, .what = "\"\xFF\"", .fix = "a\nb"}}),
              "[{\"check\":\"data\",\"state\":\"note\",\"found\":\"\\\"\uFFFD\\\"\",\"advice\":\"a\\nb\"}]\n");
}

TEST(LinkSchemes, AreWhatStandsBeforeTheColon) {
    const std::string longest(63, 'a');
    for (const auto& [url, scheme] :
         std::initializer_list<std::pair<std::string, std::string>>{{"https://example.org/a:b", "https"},
                                                                    {"x-Notes+2.0-A:item", "x-notes+2.0-a"},
                                                                    {"", ""},
                                                                    {":", ""},
                                                                    {"https", ""},
                                                                    {"/a/b:c", ""},
                                                                    {longest + ":x", longest},
                                                                    {longest + "a:x", ""}}) {
        EXPECT_EQ(schemeOf(url), scheme) << url;
    }
}

} // namespace
} // namespace host
