#include "Extension/ReadingList/ReadingListProvider.h"
#include "Tests/Extension/Lists/StoreFile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace foliovault {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using File = testing::StoreFile<ReadingListStore>;

/// One line that says all of an item that a test may want to know.
std::string outline(const ReadingListItem& item) {
    const double added = item.date.secondsSinceReferenceDate;
    return item.id + " | " + item.title + " | " + (item.isUnread ? "unread" : "read") + " | " +
           (item.date == platform::Date::distantPast() ? "-" : std::to_string(static_cast<long>(added))) + " | " +
           std::to_string(item.type) + " | " +
           (item.iconData ? std::string(item.iconData->decoded().bytes()) : std::string("-"));
}

std::vector<std::string> outlines(const std::vector<ReadingListItem>& items) {
    std::vector<std::string> lines;
    for (const ReadingListItem& item : items) {
        lines.push_back(outline(item));
    }
    return lines;
}

TEST(ReadingListStore, TakesEachRecordAsWellAsItCan) {
    const std::string needed = "<key>title</key><string>t</string><key>URL</key><string>u</string>";
    const std::pair<std::string, std::string> rows[]{
        {needed, "u | t | unread | - | 0 | -"},
        {"<key>title</key><string></string><key>URL</key><string></string>", " |  | unread | - | 0 | -"},
        {"<key>title</key><string>t</string>", ""},
        {"<key>URL</key><string>u</string>", ""},
        {"<key>Title</key><string>t</string><key>url</key><string>u</string>", ""},
        {"<key>title</key><integer>1</integer><key>URL</key><string>u</string>", ""},
        {"<key>title</key><string>t</string><key>URL</key><data>dQ==</data>", ""},
        {needed + "<key>unread</key><false/>", "u | t | read | - | 0 | -"},
        {needed + "<key>unread</key><integer>0</integer>", "u | t | unread | - | 0 | -"},
        {needed + "<key>unread</key><string>NO</string>", "u | t | unread | - | 0 | -"},
        {needed + "<key>Unread</key><false/>", "u | t | unread | - | 0 | -"},
        {needed + "<key>date</key><date>2001-01-01T00:00:10Z</date>", "u | t | unread | 10 | 0 | -"},
        {needed + "<key>date</key><string>2001-01-01T00:00:10Z</string>", "u | t | unread | - | 0 | -"},
        {needed + "<key>date</key><integer>10</integer>", "u | t | unread | - | 0 | -"},
        {needed + "<key>date</key><real>10</real>", "u | t | unread | - | 0 | -"},
        {needed + "<key>type</key><integer>-7</integer>", "u | t | unread | - | -7 | -"},
        {needed + "<key>type</key><real>7</real>", "u | t | unread | - | 0 | -"},
        {needed + "<key>type</key><true/>", "u | t | unread | - | 0 | -"},
        {needed + "<key>icon</key><data>aWNvbg==</data>", "u | t | unread | - | 0 | icon"},
        {needed + "<key>icon</key><string>icon</string>", "u | t | unread | - | 0 | -"},
        {needed + "<key>other</key><dict/>", "u | t | unread | - | 0 | -"},
    };
    for (const auto& [members, expected] : rows) {
        const File file = File::ofArray(testing::dictionary(members));
        const auto items = file.store.readFromPlist();
        EXPECT_EQ(items.empty() ? "" : outline(items.front()), expected) << members;
        EXPECT_THAT(outlines(file.store.readExcerpt(ReadingListFilter::all).filtered.items), outlines(items));
        EXPECT_THAT(file.log.lines(), IsEmpty());
    }
}

TEST(ReadingListStore, KeepsTheOrderAndWhatStandsThereTwice) {
    const File file(
        "( { title = b; URL = u2; }, { title = none; }, { title = a; URL = u1; }, { title = c; URL = u2; } )");
    EXPECT_THAT(
        outlines(file.store.readFromPlist()),
        ElementsAre("u2 | b | unread | - | 0 | -", "u1 | a | unread | - | 0 | -", "u2 | c | unread | - | 0 | -"));
}

TEST(ReadingListProvider, FiltersButCountsEverything) {
    std::string records;
    for (int i = 0; i < 40; ++i) {
        const std::string number = std::to_string(i);
        records +=
            testing::dictionary(testing::textMember("title", number) + testing::textMember("URL", "x:" + number) +
                                testing::member("unread", i % 2 == 0 ? "<false/>" : "<true/>")) +
            "<dict/>";
    }
    const std::string read = testing::dictionary(testing::textMember("title", "r") + testing::textMember("URL", "x:r") +
                                                 testing::member("unread", "<false/>"));
    struct Row {
        std::string records;
        ReadingListFilter filter;
        std::size_t items;
        std::int64_t displayCount;
        std::int64_t sourceCount;
        std::int64_t unreadCount;
        const char* first;
    };
    using enum ReadingListFilter;
    const Row rows[]{
        {records, all, 16, 40, 40, 20, "0"}, {records, unreadOnly, 16, 20, 40, 20, "1"},
        {read, all, 1, 1, 1, 0, "r"},        {read, unreadOnly, 0, 0, 1, 0, ""},
        {"", all, 0, 0, 0, 0, ""},           {"", unreadOnly, 0, 0, 0, 0, ""},
    };
    for (const Row& row : rows) {
        const File file = File::ofArray(row.records);
        const auto entry = ReadingListProvider(file.store).snapshot({.filter = row.filter});
        EXPECT_EQ(entry.items.size(), row.items);
        EXPECT_EQ(entry.displayCount, row.displayCount);
        EXPECT_EQ(entry.sourceCount, row.sourceCount);
        EXPECT_EQ(entry.unreadCount, row.unreadCount);
        EXPECT_EQ(entry.items.empty() ? "" : entry.items.front().title, row.first);
    }
    const auto placeholder = ReadingListProvider(File().store).placeholder();
    EXPECT_EQ(placeholder.unreadCount, std::count_if(placeholder.items.begin(), placeholder.items.end(),
                                                     [](const ReadingListItem& item) { return item.isUnread; }));
    EXPECT_EQ(placeholder.sourceCount, 5);
}

TEST(ReadingListIntent, TakesTheFiltersByTheirRawValuesAlone) {
    const auto description = ReadingListIntent::description();
    ASSERT_EQ(description.parameters.size(), 1U);
    const auto& parameter = description.parameters[0];
    EXPECT_EQ(parameter.description.name, "filter");
    EXPECT_EQ(parameter.description.title, "Filter");
    EXPECT_EQ(parameter.description.typeName, "Filter");
    EXPECT_EQ(parameter.description.defaultChoice, (platform::Choice{"all", "All Items"}));
    EXPECT_THAT(parameter.description.cases,
                ElementsAre(platform::Choice{"all", "All Items"}, platform::Choice{"unreadOnly", "Unread Only"}));
    ReadingListIntent intent;
    EXPECT_EQ(intent.filter, ReadingListFilter::all);
    EXPECT_TRUE(parameter.assign(intent, "unreadOnly"));
    EXPECT_EQ(intent.filter, ReadingListFilter::unreadOnly);
    for (const char* wrong : {"unreadonly", "All", "", "all "}) {
        EXPECT_FALSE(parameter.assign(intent, wrong)) << wrong;
    }
}

} // namespace
} // namespace foliovault
