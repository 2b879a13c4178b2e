#include "Host/Commands/LinkSchemes.h"
#include "Host/Commands/PendingCheck.h"

#include <gtest/gtest.h>

#include <atomic>
#include <memory>

namespace host {
namespace {

using State = Finding::State;

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

TEST(PendingCheck, IsLeftBehindWhenItHangsAndDoesNoHarmLater) {
    const auto goOn = std::make_shared<std::atomic<bool>>(false);
    const auto ended = std::make_shared<std::atomic<bool>>(false);
    {
        PendingCheck hanging(
            "compositor",
            [goOn, ended] {
                goOn->wait(false);
                ended->store(true);
                ended->notify_all();
                return Findings{Finding::ok("compositor", "late")};
            },
            std::chrono::milliseconds(20));
        PendingCheck quick("font", [] { return Findings{Finding::ok("font", "there")}; });
        EXPECT_EQ(quick.findings().front().what, "there");
        const Findings found = hanging.findings();
        ASSERT_EQ(found.size(), 1U);
        EXPECT_EQ(found.front().name, "compositor");
        EXPECT_EQ(found.front().state, State::problem);
    }
    goOn->store(true);
    goOn->notify_all();
    ended->wait(false);
    EXPECT_TRUE(*ended);
}

} // namespace
} // namespace host
