#include "Tests/Extension/Lists/StoreFile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace foliovault {
namespace {

using ::testing::ElementsAre;
using File = testing::StoreFile<WorkspaceStore>;

TEST(WorkspaceStore, TakesEachRecordAsWellAsItCan) {
    const std::string name = "<key>Name</key><string>w</string>";
    const auto inside = [&name](const char* members) {
        return name + "<key>workspace</key>" + testing::dictionary(members);
    };
    const std::pair<std::string, std::optional<WorkspaceItem>> rows[]{
        {name, WorkspaceItem("w", 0, 0)},
        {"<key>Name</key><string></string>", WorkspaceItem("", 0, 0)},
        {"<key>name</key><string>w</string>", std::nullopt},
        {"<key>Name</key><integer>1</integer>", std::nullopt},
        {name + "<key>databases</key><array><string>d</string></array>", WorkspaceItem("w", 0, 0)},
        {name + "<key>workspace</key><array><dict/></array>", WorkspaceItem("w", 0, 0)},
        {name + "<key>Workspace</key><dict><key>windows</key><array><dict/></array></dict>", WorkspaceItem("w", 0, 0)},
        {inside(""), WorkspaceItem("w", 0, 0)},
        {inside("<key>databases</key><array/>"), WorkspaceItem("w", 0, 0)},
        {inside("<key>databases</key><dict><key>a</key><string>b</string></dict>"), WorkspaceItem("w", 0, 0)},
        {inside("<key>databases</key><integer>3</integer><key>windows</key><string>2</string>"),
         WorkspaceItem("w", 0, 0)},
        {inside("<key>databases</key><array><string>a</string><true/><array/></array>"), WorkspaceItem("w", 3, 0)},
        {inside(
             "<key>windows</key><array><dict/><dict/><dict/><dict/></array><key>databases</key><array><dict/></array>"),
         WorkspaceItem("w", 1, 4)},
    };
    for (const auto& [members, expected] : rows) {
        const File file = File::ofArray(testing::dictionary(members));
        const auto items = file.store.readFromPlist();
        EXPECT_EQ(items.empty() ? std::nullopt : std::optional(items.front()), expected) << members;
        EXPECT_EQ(file.store.readExcerpt().items, items) << members;
        EXPECT_EQ(file.store.readExcerpt().count, static_cast<std::int64_t>(items.size())) << members;
    }
}

TEST(WorkspaceStore, KeepsTheOrderAndWhatStandsThereTwice) {
    const File file("( { Name = b; }, { name = none; }, { Name = a; }, { Name = b; } )");
    EXPECT_THAT(file.store.readFromPlist(),
                ElementsAre(WorkspaceItem("b", 0, 0), WorkspaceItem("a", 0, 0), WorkspaceItem("b", 0, 0)));
}

} // namespace
} // namespace foliovault
