// What the three providers answer alike, whatever they list.

#include "Extension/Favorites/FavoritesProvider.h"
#include "Extension/ReadingList/ReadingListProvider.h"
#include "Extension/Workspaces/WorkspacesProvider.h"

#include "Tests/Extension/Lists/StoreFile.h"
#include "Tests/Support/FixedClock.h"

#include <gtest/gtest.h>

namespace foliovault {
namespace {

using testing::dictionary;
using testing::textMember;

/// A list of records whose title is their number.
template <class Store>
std::string records(int count) {
    std::string all;
    for (int i = 0; i < count; ++i) {
        const std::string number = std::to_string(i);
        all += dictionary(textMember("Name", number) + textMember("UUID", number) + textMember("title", number) +
                          textMember("URL", number));
    }
    return all;
}

template <class Provider>
struct StoreOf;
template <class Entry, class Intent, class Store>
struct StoreOf<ListProvider<Entry, Intent, Store>> {
    using type = Store;
};

template <class Provider>
class EveryListProvider : public ::testing::Test {
  public:
    using Store = typename StoreOf<Provider>::type;
};
using Providers = ::testing::Types<FavoritesProvider, ReadingListProvider, WorkspacesProvider>;
TYPED_TEST_SUITE(EveryListProvider, Providers);

TYPED_TEST(EveryListProvider, ShowsTheFirstSixteenAndCountsAll) {
    using Store = typename TestFixture::Store;
    const platform::FixedClock clock({1000});
    for (const std::size_t count : {0U, 1U, 16U, 17U, 40U}) {
        const auto file = testing::StoreFile<Store>::ofArray(records<Store>(static_cast<int>(count)));
        const auto timeline = TypeParam(file.store, clock).timeline({});
        ASSERT_EQ(timeline.entries.size(), 1U);
        const auto& entry = timeline.entries[0];
        ASSERT_EQ(entry.items.size(), std::min<std::size_t>(count, 16));
        EXPECT_EQ(entry.displayCount, static_cast<std::int64_t>(count));
        for (std::size_t i = 0; i < entry.items.size(); ++i) {
            EXPECT_EQ(entry.items[i].displayTitle(), std::to_string(i));
        }
        EXPECT_EQ(file.store.readFromPlist().size(), count);
    }
}

TYPED_TEST(EveryListProvider, DatesTheEntryNowAndAsksToBeAskedAfterFiveMinutesOrAChange) {
    using Store = typename TestFixture::Store;
    const testing::StoreFile<Store> file;
    const platform::FixedClock clock({1000});
    const TypeParam provider(file.store, clock);
    EXPECT_EQ(provider.timeline({}).entries[0].date, platform::Date{1000});
    EXPECT_EQ(provider.timeline({}).reload.date, platform::Date{1300});
    EXPECT_EQ(provider.timeline({}).watches,
              std::vector{std::string("Library/Application Support/FOLIOvault/") + testing::fileName<Store>});
    EXPECT_EQ(provider.snapshot({}).date, platform::Date{1000});
    EXPECT_EQ(provider.placeholder().date, platform::Date{1000});
}

TYPED_TEST(EveryListProvider, ReadsTheFileAfreshForEachRequestButNoneForAPlaceholder) {
    using Store = typename TestFixture::Store;
    auto file = testing::StoreFile<Store>::ofArray(records<Store>(2));
    const platform::FixedClock clock;
    const TypeParam provider(file.store, clock);
    EXPECT_EQ(provider.placeholder().displayCount, static_cast<std::int64_t>(provider.placeholder().items.size()));
    EXPECT_EQ(file.readCount(), 0);
    EXPECT_EQ(provider.snapshot({}).displayCount, 2);
    file.files.write(file.path, "<array>" + records<Store>(3) + "</array>");
    EXPECT_EQ(provider.snapshot({}).displayCount, 3);
    file.files.remove(file.path);
    EXPECT_EQ(provider.snapshot({}).displayCount, 0);
    EXPECT_EQ(file.readCount(), 3);
}

} // namespace
} // namespace foliovault
