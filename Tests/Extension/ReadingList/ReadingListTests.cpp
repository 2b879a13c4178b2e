// What the Reading List widget makes of its file. The tests of bad libraries have values of the wrong kind.

#include "Extension/ReadingList/ReadingListWidget.h"

#include "Tests/Extension/Lists/MemoryLibrary.h"
#include "Tests/Support/Repeated.h"
#include "Tests/Support/ViewText.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace foliovault {
namespace {

using platform::json;
using platform::WidgetFamily;
using ::testing::HasSubstr;
using ::testing::Not;
using File = testing::StoreFile<ReadingListStore>;

constexpr auto none = std::nullopt;

TEST(ReadingListStore, TakesEachRecordAsWellAsItCan) {
    const std::string needed = "<key>title</key><string>t</string><key>URL</key><string>u</string>";
    const File file("<array><dict>" + needed + R"(
            <key>unread</key><false/><key>date</key><date>2001-01-01T00:00:10Z</date>
            <key>type</key><integer>-7</integer><key>icon</key><data>aWNvbg==</data></dict>
        <dict>)" + needed +
                    R"(<key>unread</key><integer>0</integer><key>date</key><string/></dict>
        <dict><key>title</key><string>t</string></dict><dict><key>URL</key><string>u</string></dict></array>)");
    const auto items = file.store.readFromPlist();
    ASSERT_EQ(items.size(), 2U);
    EXPECT_EQ(items[0].id + items[0].title, "ut");
    EXPECT_TRUE(!items[0].isUnread && items[1].isUnread);
    EXPECT_EQ(items[0].date, platform::Date{10});
    EXPECT_EQ(items[1].date, platform::Date::distantPast());
    EXPECT_TRUE(items[0].type == -7 && items[1].type == 0);
    EXPECT_EQ(items[0].iconData->decoded().bytes(), "icon");
    EXPECT_EQ(items[1].iconData, none);
}

TEST(ReadingListItem, SaysWhatItIsAndWhereOnTheWeb) {
    const std::pair<const char*, std::optional<std::string>> rows[]{
        {"HTTP://museum.example/a", "museum.example"},
        {"https://WWW.Museum.example/", "WWW.Museum.example"},
        {"https://www.www.example", "www.example"},
        {"https://www./", ""},
        {"https://user@museum.example:8080/", "museum.example"},
        {"https://user@/", none},
        {"ftp://museum.example", none},
        {"https://a b.example", none},
    };
    for (const auto& [address, host] : rows) {
        const ReadingListItem item{.id = address, .type = 12};
        EXPECT_EQ(item.sourceHost(), host) << address;
        EXPECT_EQ(item.displaySubtitle(), host ? "PDF · " + *host : "PDF") << address;
    }
    const ReadingListItem item{.id = "https://museum.example/a?b=c", .title = "one"};
    EXPECT_EQ(item.displayURL().value().absoluteString(),
              "x-foliovault://open-url?location=https://museum.example/a?b%3Dc&widget=readinglist");
    EXPECT_EQ(item.dotColor(), platform::Color::blue);
    EXPECT_EQ((ReadingListItem{.isUnread = false}).dotColor(), none);
    EXPECT_EQ(item, (ReadingListItem{.id = item.id, .isUnread = false}));
    EXPECT_FALSE(item == (ReadingListItem{.id = "x:", .title = "one"}));
}

TEST(ReadingListProvider, FiltersButCountsEverything) {
    const auto records = [](std::size_t count, const std::string& unread) {
        return platform::repeated("<dict><key>title</key><string/><key>URL</key><string>x:</string><key>unread</key>" +
                                      unread + "</dict><dict/>",
                                  count);
    };
    const std::string mixed = records(17, "<false/>") + records(20, "<true/>");
    using enum ReadingListFilter;
    const std::tuple<std::string, ReadingListFilter, std::size_t, std::int64_t, std::int64_t, std::int64_t> rows[]{
        {mixed, all, 16, 37, 37, 20},
        {mixed, unreadOnly, 16, 20, 37, 20},
        {records(1, "<false/>"), unreadOnly, 0, 0, 1, 0},
        {"", unreadOnly, 0, 0, 0, 0},
    };
    for (const auto& [elements, filter, items, displayCount, sourceCount, unreadCount] : rows) {
        const File file("<array>" + elements + "</array>");
        const auto entry = ReadingListProvider(file.store).snapshot({.filter = filter});
        EXPECT_EQ(entry.items.size(), items);
        EXPECT_EQ(entry.displayCount, displayCount);
        EXPECT_EQ(entry.sourceCount, sourceCount);
        EXPECT_EQ(entry.unreadCount, unreadCount);
        EXPECT_TRUE(entry.items.empty() || entry.items.front().isUnread == (filter == unreadOnly));
    }
}

TEST(ReadingListEntryView, CountsUnreadItemsInHeaderAndBadge) {
    ReadingListEntry entry;
    entry.add({.id = "x:", .isUnread = false}, {});
    EXPECT_THAT(json(ReadingListEntryView{entry}.body({.family = WidgetFamily::medium})),
                ::testing::AllOf(HasSubstr("\"0 unread\""), Not(HasSubstr("capsule"))));
    EXPECT_THAT(
        json(ReadingListEntryView{entry}.body({.family = WidgetFamily::small})),
        HasSubstr(
            R"({"type":"hstack","children":[{"type":"text","text":"Reading List","font":{"style":"headline"}},{"type":"spacer"},{"type":"background","shape":"capsule","fill":"blue","child":{"type":"padding","top":2,"bottom":2,"leading":6,"trailing":6,"child":{"type":"text","text":"0","font":{"style":"caption","weight":"semibold"},"foreground":"white"}}}]})"));
    ReadingListEntry allRead;
    allRead.add({.id = "x:", .isUnread = false}, {.filter = ReadingListFilter::unreadOnly});
    EXPECT_EQ(
        json(ReadingListEntryView{allRead}.body({})),
        R"({"type":"vstack","spacing":8,"children":[{"type":"symbol","symbol":"checkmark.circle","font":{"style":"largeTitle"},"foreground":"green"},{"type":"text","text":"All Read","font":{"style":"headline"},"foreground":"secondary"}]})");
}

} // namespace
} // namespace foliovault
