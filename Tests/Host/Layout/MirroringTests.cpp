#include "Host/Layout/Mirroring.h"

#include "Platform/Views/Node.h"
#include "Tests/Host/Layout/FakeMeasurers.h"
#include "Tests/Host/Layout/LayoutDump.h"

#include <gtest/gtest.h>

namespace host {
namespace {

using namespace platform; // NOLINT(google-build-using-namespace): views read like the pictures they draw

TEST(Mirroring, PutsWhatIsLeftToTheRight) {
    const View view =
        vStack({.alignment = HorizontalAlignment::leading, .spacing = 0},
               {hStack({.spacing = 4}, {symbol("star"), text("Inbox"), spacer(), text("12")}).link("x:row"),
                text("two\nlines").textAlignment(HorizontalAlignment::trailing).frame({.width = 60}), divider()});
    FakeTexts texts;
    FakeImages images;
    WidgetLayout layout = layOut(view, {170, 80}, texts, images);
    const std::string before = dump(layout);
    mirror(layout);
    EXPECT_EQ(dump(layout), R"(symbol 146,18.5 12x12 star link 0
text 112,17 30x15 "Inbox" trailing link 0
text 12,17 12x15 "12" trailing link 0
text 113,32 30x30 "two|lines"
divider 12,62 146x1
link 12,17 146x15 x:row
)");
    mirror(layout);
    EXPECT_EQ(dump(layout), before);
}

} // namespace
} // namespace host
