#include "Extension/ReadingList/ReadingListViews.h"

#include "Tests/Support/ViewText.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace foliovault {
namespace {

using platform::json;
using platform::WidgetFamily;
using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::Not;

std::string picture(const ReadingListEntry& entry, WidgetFamily family) {
    return json(ReadingListEntryView{entry}.body({.family = family}));
}

TEST(ReadingListEntryView, TellsAnEmptyListFromOneThatIsReadThrough) {
    const ReadingListEntry empty;
    const ReadingListEntry allRead{.date = {}, .items = {}, .displayCount = 0, .sourceCount = 3, .unreadCount = 0};
    for (const auto family : {WidgetFamily::small, WidgetFamily::extraLarge}) {
        EXPECT_THAT(picture(empty, family), AllOf(HasSubstr("\"No Items\""), HasSubstr("\"text.book.closed\"")));
        EXPECT_EQ(
            picture(allRead, family),
            R"({"type":"vstack","spacing":8,"children":[{"type":"symbol","symbol":"checkmark.circle","font":{"style":"largeTitle"},"foreground":"green"},{"type":"text","text":"All Read","font":{"style":"headline"},"foreground":"secondary"}]})");
    }
}

TEST(ReadingListEntryView, CountsUnreadItemsInHeaderAndBadge) {
    const ReadingListEntry entry{.date = {},
                                 .items = ReadingListItem::sampleItems(),
                                 .displayCount = 1234,
                                 .sourceCount = 1234,
                                 .unreadCount = 0};
    EXPECT_THAT(picture(entry, WidgetFamily::medium),
                AllOf(HasSubstr("\"0 unread\""), HasSubstr("\"+1229 more\""), Not(HasSubstr("capsule"))));
    EXPECT_THAT(
        picture(entry, WidgetFamily::small),
        AllOf(
            HasSubstr(
                R"({"type":"hstack","children":[{"type":"text","text":"Reading List","font":{"style":"headline"}},{"type":"spacer"},{"type":"background","shape":"capsule","fill":"blue","child":{"type":"padding","top":2,"bottom":2,"leading":6,"trailing":6,"child":{"type":"text","text":"0","font":{"style":"caption","weight":"semibold"},"foreground":"white"}}}]})"),
            Not(HasSubstr("unread"))));
}

} // namespace
} // namespace foliovault
