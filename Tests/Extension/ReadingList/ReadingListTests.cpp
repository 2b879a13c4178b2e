// What the Reading List widget makes of its file. Values of the wrong kind are told apart by the tests of bad
// libraries.

#include "Extension/ReadingList/ReadingListWidget.h"

#include "Tests/Extension/Lists/StoreFile.h"
#include "Tests/Support/ViewText.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace foliovault {
namespace {

using platform::json;
using platform::WidgetFamily;
using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;
using File = testing::StoreFile<ReadingListStore>;

constexpr auto none = std::nullopt;

/// One line with all of an item.
std::string outline(const ReadingListItem& item) {
    const bool hasDate = item.date != platform::Date::distantPast();
    return item.id + " | " + item.title + " | " + (item.isUnread ? "unread" : "read") + " | " +
           (hasDate ? std::to_string(static_cast<long>(item.date.secondsSinceReferenceDate)) : "-") + " | " +
           std::to_string(item.type) + " | " + (item.iconData ? std::string(item.iconData->decoded().bytes()) : "-");
}

TEST(ReadingListStore, TakesEachRecordAsWellAsItCan) {
    const std::string needed = "<key>title</key><string>t</string><key>URL</key><string>u</string>";
    const std::pair<std::string, std::string> rows[]{
        {needed, "u | t | unread | - | 0 | -"},
        {"<key>title</key><string></string><key>URL</key><string></string>", " |  | unread | - | 0 | -"},
        {"<key>title</key><string>t</string>", ""},
        {"<key>Title</key><string>t</string><key>url</key><string>u</string>", ""},
        {needed + "<key>unread</key><false/><key>date</key><date>2001-01-01T00:00:10Z</date><key>type</key>"
                  "<integer>-7</integer><key>icon</key><data>aWNvbg==</data>",
         "u | t | read | 10 | -7 | icon"},
        {needed + "<key>Unread</key><false/>", "u | t | unread | - | 0 | -"},
        {needed + "<key>unread</key><integer>0</integer>", "u | t | unread | - | 0 | -"},
        {needed + "<key>date</key><string>2001-01-01T00:00:10Z</string>", "u | t | unread | - | 0 | -"},
        {needed + "<key>date</key><real>10</real>", "u | t | unread | - | 0 | -"},
    };
    for (const auto& [members, expected] : rows) {
        const auto items = File::ofArray("<dict>" + members + "</dict>").store.readFromPlist();
        EXPECT_EQ(items.empty() ? "" : outline(items.front()), expected) << members;
    }
}

TEST(ReadingListStore, KeepsTheOrderAndWhatStandsThereTwice) {
    const File file(
        "( { title = b; URL = u2; }, { title = none; }, { title = a; URL = u1; }, { title = c; URL = u2; } )");
    EXPECT_THAT(file.store.readFromPlist(),
                ElementsAre(ReadingListItem{.id = "u2"}, ReadingListItem{.id = "u1"}, ReadingListItem{.id = "u2"}));
}

TEST(ReadingListItem, SaysWhatItIsAndWhereOnTheWeb) {
    const std::tuple<const char*, std::optional<std::string>, const char*> rows[]{
        {"https://www.museum.example/a", "museum.example", "PDF · museum.example"},
        {"HTTP://museum.example", "museum.example", "PDF · museum.example"},
        {"https://WWW.Museum.example/", "WWW.Museum.example", "PDF · WWW.Museum.example"},
        {"https://www.www.example", "www.example", "PDF · www.example"},
        {"https://wwwmuseum.example", "wwwmuseum.example", "PDF · wwwmuseum.example"},
        {"https://www./", "", "PDF · "},
        {"https://user@museum.example:8080/", "museum.example", "PDF · museum.example"},
        {"https://b\u00FCcher.example/", "xn--bcher-kva.example", "PDF · xn--bcher-kva.example"},
        {"https://museum.example/a b", "museum.example", "PDF · museum.example"},
        {"https://[::1]/", "::1", "PDF · ::1"},
        {"https://user@/", none, "PDF"},
        {"https:museum.example", none, "PDF"},
        {"//www.museum.example", none, "PDF"},
        {"ftp://museum.example", none, "PDF"},
        {"x-foliovault-item://museum.example", none, "PDF"},
        {"https://a b.example", none, "PDF"},
        {"", none, "PDF"},
    };
    for (const auto& [address, host, subtitle] : rows) {
        const ReadingListItem item{.id = address, .type = 12};
        EXPECT_EQ(item.sourceHost(), host) << address;
        EXPECT_EQ(item.displaySubtitle(), subtitle) << address;
    }
}

TEST(ReadingListItem, OpensItsAddressThroughTheApplicationAndHasADotWhileUnread) {
    const ReadingListItem item{.id = "https://museum.example/a?b=c", .title = "one"};
    EXPECT_EQ(item.displayURL().value().absoluteString(),
              "x-foliovault://open-url?location=https://museum.example/a?b%3Dc&widget=readinglist");
    EXPECT_EQ((ReadingListItem{.id = "https://a b.example"}).displayURL(), none);
    EXPECT_EQ(item.dotColor(), platform::Color::blue);
    EXPECT_EQ((ReadingListItem{.isUnread = false}).dotColor(), none);
    EXPECT_EQ(item, (ReadingListItem{.id = item.id, .isUnread = false}));
    EXPECT_FALSE(item == (ReadingListItem{.id = "x:", .title = "one"}));
}

TEST(ReadingListProvider, FiltersButCountsEverything) {
    const auto records = [](int count, const char* unread) {
        std::string all;
        for (int i = 0; i < count; ++i) {
            all += "<dict><key>title</key><string/><key>URL</key><string>x:</string><key>unread</key>" +
                   std::string(unread) + "</dict><dict/>";
        }
        return all;
    };
    const std::string mixed = records(17, "<false/>") + records(20, "<true/>");
    struct Row {
        std::string records;
        ReadingListFilter filter;
        std::size_t items;
        std::int64_t displayCount;
        std::int64_t sourceCount;
        std::int64_t unreadCount;
    };
    using enum ReadingListFilter;
    const Row rows[]{
        {mixed, all, 16, 37, 37, 20},
        {mixed, unreadOnly, 16, 20, 37, 20},
        {records(1, "<false/>"), unreadOnly, 0, 0, 1, 0},
        {"", unreadOnly, 0, 0, 0, 0},
    };
    for (const Row& row : rows) {
        const File file = File::ofArray(row.records);
        const auto entry = ReadingListProvider(file.store).snapshot({.filter = row.filter});
        EXPECT_EQ(entry.items.size(), row.items);
        EXPECT_EQ(entry.displayCount, row.displayCount);
        EXPECT_EQ(entry.sourceCount, row.sourceCount);
        EXPECT_EQ(entry.unreadCount, row.unreadCount);
        EXPECT_TRUE(entry.items.empty() || entry.items.front().isUnread == (row.filter == unreadOnly));
    }
    EXPECT_EQ(ReadingListProvider(File().store).placeholder().unreadCount, 3);
}

TEST(ReadingListIntent, TakesTheFiltersByTheirRawValuesAlone) {
    const auto description = ReadingListIntent::description();
    const auto& parameter = description.parameters.at(0);
    EXPECT_EQ(parameter.description.name, "filter");
    EXPECT_EQ(parameter.description.defaultChoice, (platform::Choice{"all", "All Items"}));
    EXPECT_THAT(parameter.description.cases,
                ElementsAre(platform::Choice{"all", "All Items"}, platform::Choice{"unreadOnly", "Unread Only"}));
    ReadingListIntent intent;
    EXPECT_TRUE(parameter.assign(intent, "unreadOnly"));
    EXPECT_EQ(intent.filter, ReadingListFilter::unreadOnly);
    for (const char* wrong : {"unreadonly", "All", "", "all "}) {
        EXPECT_FALSE(parameter.assign(intent, wrong)) << wrong;
    }
}

TEST(ReadingListEntryView, TellsAnEmptyListFromOneThatIsReadThrough) {
    const ReadingListEntry empty;
    ReadingListEntry allRead;
    allRead.add({.id = "x:", .isUnread = false}, {.filter = ReadingListFilter::unreadOnly});
    EXPECT_THAT(json(ReadingListEntryView{empty}.body({})), HasSubstr("\"No Items\""));
    EXPECT_EQ(
        json(ReadingListEntryView{allRead}.body({})),
        R"({"type":"vstack","spacing":8,"children":[{"type":"symbol","symbol":"checkmark.circle","font":{"style":"largeTitle"},"foreground":"green"},{"type":"text","text":"All Read","font":{"style":"headline"},"foreground":"secondary"}]})");
}

TEST(ReadingListEntryView, CountsUnreadItemsInHeaderAndBadge) {
    ReadingListEntry entry;
    entry.add({.id = "x:", .isUnread = false}, {});
    EXPECT_THAT(json(ReadingListEntryView{entry}.body({.family = WidgetFamily::medium})),
                AllOf(HasSubstr("\"0 unread\""), Not(HasSubstr("capsule"))));
    EXPECT_THAT(
        json(ReadingListEntryView{entry}.body({.family = WidgetFamily::small})),
        AllOf(
            HasSubstr(
                R"({"type":"hstack","children":[{"type":"text","text":"Reading List","font":{"style":"headline"}},{"type":"spacer"},{"type":"background","shape":"capsule","fill":"blue","child":{"type":"padding","top":2,"bottom":2,"leading":6,"trailing":6,"child":{"type":"text","text":"0","font":{"style":"caption","weight":"semibold"},"foreground":"white"}}}]})"),
            Not(HasSubstr("unread"))));
}

} // namespace
} // namespace foliovault
