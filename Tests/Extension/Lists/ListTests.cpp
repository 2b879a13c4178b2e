// What the three lists do alike: their stores with a file that is not as it should be, their providers, and what their
// widgets declare and draw.

#include "Extension/Favorites/FavoritesWidget.h"
#include "Extension/ReadingList/ReadingListWidget.h"
#include "Extension/Workspaces/WorkspacesWidget.h"

#include "Tests/Extension/Lists/StoreFile.h"
#include "Tests/Support/FixedClock.h"
#include "Tests/Support/ViewText.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace foliovault {
namespace {

using platform::json;
using platform::WidgetFamily;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

struct FavoritesList {
    using Store = FavoritesStore;
    using Provider = FavoritesProvider;
    using Widget = FavoritesWidget;
    static constexpr const char* file = "Favorites.plist";
    static constexpr const char* category = "FavoritesStore";
    static constexpr const char* kind = "FavoritesWidget";
    static constexpr const char* title = "Favorites";
    static constexpr const char* previewPrefix = "Favorites ";
    /// What only the samples have, and what the view without items says.
    static constexpr const char* sample = "~/Databases/Research.fvBase2";
    static constexpr const char* empty[] = {"star", "No Favorites", "Add favorites in FOLIOvault to see them here."};
};

struct ReadingList {
    using Store = ReadingListStore;
    using Provider = ReadingListProvider;
    using Widget = ReadingListWidget;
    static constexpr const char* file = "ReadingList.plist";
    static constexpr const char* category = "ReadingListStore";
    static constexpr const char* kind = "ReadingListWidget";
    static constexpr const char* title = "Reading List";
    static constexpr const char* previewPrefix = "";
    static constexpr const char* sample = "Meeting Notes – Q1 Review";
    static constexpr const char* empty[] = {"text.book.closed", "No Items", "Your FOLIOvault reading list is empty."};
};

struct WorkspacesList {
    using Store = WorkspaceStore;
    using Provider = WorkspacesProvider;
    using Widget = WorkspacesWidget;
    static constexpr const char* file = "OrderedWorkspaces.plist";
    static constexpr const char* category = "WorkspaceStore";
    static constexpr const char* kind = "WorkspacesWidget";
    static constexpr const char* title = "Workspaces";
    static constexpr const char* previewPrefix = "Workspaces ";
    static constexpr const char* sample = "5 databases";
    static constexpr const char* empty[] = {"rectangle.stack", "No Workspaces",
                                            "Create workspaces in FOLIOvault to see them here."};
};

template <class List>
class EveryList : public ::testing::Test {
  public:
    using File = testing::StoreFile<typename List::Store>;
};
using Lists = ::testing::Types<FavoritesList, ReadingList, WorkspacesList>;
TYPED_TEST_SUITE(EveryList, Lists);

/// The elements of a file with records whose title is their number.
std::string records(std::size_t count) {
    std::string all;
    for (std::size_t i = 0; i < count; ++i) {
        const std::string text = "<string>" + std::to_string(i) + "</string>";
        all += "<dict><key>Name</key>" + text + "<key>UUID</key>" + text + "<key>title</key>" + text +
               "<key>URL</key>" + text + "</dict><dict/>";
    }
    return all;
}

TYPED_TEST(EveryList, LogsWhyAFileHasNoItems) {
    using File = typename TestFixture::File;
    const platform::LogLine unread{platform::LogLevel::debug, TypeParam::category,
                                   std::string("Could not read ") + TypeParam::file};
    File file;
    EXPECT_THAT(file.store.readFromPlist(), IsEmpty());
    file.files.write(file.path, "<array/>");
    file.files.makeUnreadable(file.path);
    EXPECT_THAT(file.store.readFromPlist(), IsEmpty());
    EXPECT_THAT(file.log.lines(), ElementsAre(unread, unread));

    const platform::LogLine unparsed{platform::LogLevel::error, TypeParam::category,
                                     std::string("Could not parse ") + TypeParam::file};
    for (const char* content : {"", "hello", "<dict/>", "<array><dict/><array/></array>"}) {
        const File bad{std::string(content)};
        EXPECT_THAT(bad.store.readFromPlist(), IsEmpty()) << content;
        EXPECT_THAT(bad.log.lines(), ElementsAre(unparsed)) << content;
    }
    const auto good = File::ofArray("<dict><key>name</key><string>n</string></dict><dict/>");
    EXPECT_THAT(good.store.readFromPlist(), IsEmpty());
    EXPECT_THAT(good.log.lines(), IsEmpty());
}

TYPED_TEST(EveryList, ShowsTheFirstSixteenAndCountsAll) {
    const platform::FixedClock clock({1000});
    for (const std::size_t count : {0U, 1U, 16U, 17U, 40U}) {
        const auto file = TestFixture::File::ofArray(records(count));
        const auto timeline = typename TypeParam::Provider(file.store, clock).timeline({});
        ASSERT_EQ(timeline.entries.size(), 1U);
        const auto& entry = timeline.entries[0];
        EXPECT_EQ(entry.date, platform::Date{1000});
        EXPECT_EQ(entry.displayCount, static_cast<std::int64_t>(count));
        ASSERT_EQ(entry.items.size(), std::min<std::size_t>(count, 16));
        for (std::size_t i = 0; i < entry.items.size(); ++i) {
            EXPECT_EQ(entry.items[i].displayTitle(), std::to_string(i));
        }
        EXPECT_EQ(timeline.reload.date, platform::Date{1300});
        EXPECT_THAT(timeline.watches,
                    ElementsAre(std::string("Library/Application Support/FOLIOvault/") + TypeParam::file));
    }
}

TYPED_TEST(EveryList, ReadsTheFileForEachRequestAndNotForPlaceholderAndPreviews) {
    auto file = TestFixture::File::ofArray(records(2));
    const typename TypeParam::Provider provider(file.store);
    const auto widget = typename TypeParam::Widget{provider}.body();
    EXPECT_THAT(json(widget->preview(2).at(0).view), HasSubstr(TypeParam::sample));
    EXPECT_THAT(json(widget->preview(3).at(0).view), HasSubstr(TypeParam::empty[1]));
    EXPECT_THAT(json(widget->placeholder({.family = WidgetFamily::large}).view), HasSubstr(TypeParam::sample));
    EXPECT_EQ(provider.placeholder().displayCount, static_cast<std::int64_t>(provider.placeholder().items.size()));
    EXPECT_EQ(file.readCount(), 0);
    EXPECT_EQ(provider.snapshot({}).displayCount, 2);
    file.files.write(file.path, "<array>" + records(3) + "</array>");
    EXPECT_EQ(provider.snapshot({}).displayCount, 3);
    file.files.remove(file.path);
    EXPECT_EQ(provider.snapshot({}).displayCount, 0);
    EXPECT_EQ(file.readCount(), 3);
}

TYPED_TEST(EveryList, DeclaresFourFamiliesAndFourPreviews) {
    const typename TestFixture::File file;
    const auto widget = typename TypeParam::Widget{typename TypeParam::Provider(file.store)}.body();
    const auto description = widget->description();
    EXPECT_EQ(description.kind, TypeParam::kind);
    EXPECT_EQ(description.displayName, TypeParam::title);
    EXPECT_EQ(description.containerBackground, "tertiaryFill");
    EXPECT_THAT(description.families,
                ElementsAre(WidgetFamily::small, WidgetFamily::medium, WidgetFamily::large, WidgetFamily::extraLarge));
    std::vector<std::string> names;
    for (const auto& preview : widget->previews()) {
        names.push_back(preview.name + " " + std::string(platform::familyName(preview.family)));
    }
    const std::string prefix = TypeParam::previewPrefix;
    EXPECT_THAT(names, ElementsAre(prefix + "Small small", prefix + "Medium medium", prefix + "Large large",
                                   prefix + "Empty small"));
}

TYPED_TEST(EveryList, ShowsItsEmptyViewInEveryFamily) {
    const typename TestFixture::File file;
    const auto widget = typename TypeParam::Widget{typename TypeParam::Provider(file.store)}.body();
    const auto& [symbol, title, explanation] = TypeParam::empty;
    const std::string expected =
        std::string(R"({"type":"vstack","spacing":8,"children":[{"type":"symbol","symbol":")") + symbol +
        R"(","font":{"style":"largeTitle"},"foreground":"secondary"},{"type":"text","text":")" + title +
        R"(","font":{"style":"headline"},"foreground":"secondary"},{"type":"text","text":")" + explanation +
        R"(","textAlignment":"center","font":{"style":"caption"},"foreground":"tertiary"}]})";
    for (const auto family : {WidgetFamily::small, WidgetFamily::medium, WidgetFamily::large, WidgetFamily::extraLarge,
                              WidgetFamily::unknown}) {
        EXPECT_EQ(json(widget->snapshot({}, {.family = family})->view), expected);
    }
}

} // namespace
} // namespace foliovault
