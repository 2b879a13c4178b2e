// What the three stores do alike with a file that is not as it should be, as the log and the caller see it.

#include "Tests/Extension/Lists/StoreFile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace foliovault {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using testing::StoreFile;

template <class Store>
class ListStore : public ::testing::Test {};

struct Names {
    template <class Store>
    static std::string GetName(int /*index*/) {
        return testing::fileName<Store>;
    }
};
using Stores = ::testing::Types<FavoritesStore, ReadingListStore, WorkspaceStore>;
TYPED_TEST_SUITE(ListStore, Stores, Names);

template <class Store>
constexpr const char* category = "FavoritesStore";
template <>
constexpr const char* category<ReadingListStore> = "ReadingListStore";
template <>
constexpr const char* category<WorkspaceStore> = "WorkspaceStore";

TYPED_TEST(ListStore, SaysForDebuggingThatTheFileCannotBeRead) {
    const platform::LogLine line{platform::LogLevel::debug, category<TypeParam>,
                                 std::string("Could not read ") + testing::fileName<TypeParam>};
    StoreFile<TypeParam> file;
    EXPECT_THAT(file.store.readFromPlist(), IsEmpty());
    EXPECT_THAT(file.log.lines(), ElementsAre(line));
    file.files.write(file.path, "<array/>");
    file.files.makeUnreadable(file.path);
    EXPECT_THAT(file.store.readFromPlist(), IsEmpty());
    EXPECT_THAT(file.log.lines(), ElementsAre(line, line));
}

TYPED_TEST(ListStore, SaysAsAnErrorThatTheFileCannotBeParsed) {
    const platform::LogLine line{platform::LogLevel::error, category<TypeParam>,
                                 std::string("Could not parse ") + testing::fileName<TypeParam>};
    for (const char* content :
         {"", "\n", "hello", "bplist00", "<plist><dict/></plist>", "<plist><array><string/></array></plist>",
          "<plist><array><dict/><array/></array></plist>", "<plist><array><dict></array></plist>", "(a, b)", "<6869>",
          "<plist><string>a</string></plist>"}) {
        const StoreFile<TypeParam> file{std::string(content)};
        EXPECT_THAT(file.store.readFromPlist(), IsEmpty()) << content;
        EXPECT_THAT(file.log.lines(), ElementsAre(line)) << content;
    }
}

TYPED_TEST(ListStore, HasNothingToSayOfAnEmptyListAndOfRecordsThatAreNoItems) {
    for (const char* elements : {"", "<dict/>", "<dict><key>name</key><string>n</string></dict><dict/>"}) {
        const auto file = StoreFile<TypeParam>::ofArray(elements);
        EXPECT_THAT(file.store.readFromPlist(), IsEmpty()) << elements;
        EXPECT_THAT(file.log.lines(), IsEmpty()) << elements;
    }
}

} // namespace
} // namespace foliovault
