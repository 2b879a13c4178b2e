#include "Host/Launcher/ProgramChoice.h"

#include <gmock/gmock.h>

#include <vector>

namespace host {
namespace {

struct Case {
    std::vector<const char*> arguments;
    bool withDisplay;
    bool withoutDisplay;
};

TEST(ProgramChoice, GoesByTheCommandElseByTheDisplay) {
    for (const Case& one : std::vector<Case>{
             {{}, true, false},
             {{"--unconfined", "--home", "desktop"}, true, false},
             {{"--home"}, true, false},
             {{"--home=desktop", "--bogus"}, true, false},
             {{"desktop"}, true, true},
             {{"desktop", "--help"}, true, true},
             {{"--extension", "host", "--home=/tmp", "--unconfined", "desktop", "--background"}, true, true},
             {{"render", "desktop"}, false, false},
             {{"--home", "desktop", "host"}, false, false},
             {{""}, false, false},
             {{"Desktop"}, false, false},
             {{"--help"}, false, false},
             {{"-h", "desktop"}, false, false},
             {{"--unconfined", "--version"}, false, false},
         }) {
        EXPECT_EQ(asksForDesktop(one.arguments, true), one.withDisplay) << testing::PrintToString(one.arguments);
        EXPECT_EQ(asksForDesktop(one.arguments, false), one.withoutDisplay) << testing::PrintToString(one.arguments);
    }
}

} // namespace
} // namespace host
