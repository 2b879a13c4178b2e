#include "Host/Session/EntryStore.h"

#include "Platform/Views/Stack.h"
#include "Tests/Support/MemoryFileSystem.h"
#include "Tests/Support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>

namespace host {
namespace {

namespace fs = std::filesystem;
using ::testing::MatchesRegex;

constexpr const char* mode = "fullColor";
constexpr std::string_view json =
    R"({"date":"2026-03-16T09:30:00.000Z","content":{"widgetURL":"x:\n","view":{"type":"vstack","children":[)"
    R"({"type":"text","text":"two\nlines"},{"type":"image","data":"AAAA","fallback":{"type":"clear"}}]}}})";

class EntryStoreTest : public testing::Test {
  protected:
    EntryStoreTest() { setenv("LANG", "de_AT.UTF-8", 1); }

    const platform::TemporaryFolder temporary;
    const fs::path folder = temporary.path("widgethost/tiles");
    const EntryStore store{platform::DiskFileSystem::shared(), folder};
    const Instance instance{.id = 3,
                            .extension = "net.foliovault.widgets",
                            .kind = "FavoritesWidget",
                            .family = "medium",
                            .configuration = {{"group", "Work \"quoted\"\n"}},
                            .unknown = {}};
    simdjson::dom::parser parser;
    const StoredEntry entry{readEntries(parser.parse(json))->front(), {758'100'000.125}, {758'100'300}};
};

TEST_F(EntryStoreTest, LoadsOnlyWhatWasMadeForTheSame) {
    EXPECT_FALSE(store.load(instance, mode));
    fs::create_directories(folder);
    ASSERT_FALSE(store.save(instance, mode, entry));
    EXPECT_EQ(fs::status(folder).permissions(), fs::perms(0700)) << "entries are private";
    EXPECT_EQ(fs::status(folder / "3.tile").permissions(), fs::perms(0600));
    const auto loaded = store.load(instance, mode);
    ASSERT_TRUE(loaded);
    EXPECT_EQ(loaded->entry.view, entry.entry.view);
    EXPECT_EQ(loaded->entry.widgetURL, "x:\n");
    EXPECT_EQ(loaded->made, entry.made);
    EXPECT_EQ(loaded->reload, entry.reload);

    for (void (*change)(Instance&) : std::initializer_list<void (*)(Instance&)>{
             [](Instance& i) { i.id = 4; }, [](Instance& i) { i.extension += "2"; },
             [](Instance& i) { i.kind = "TipsWidget"; }, [](Instance& i) { i.family = "large"; },
             [](Instance& i) { i.configuration.clear(); }}) {
        Instance other = instance;
        change(other);
        EXPECT_FALSE(store.load(other, mode));
    }
    EXPECT_FALSE(store.load(instance, "tinted"));
    setenv("LANG", "en_GB.UTF-8", 1);
    EXPECT_FALSE(store.load(instance, mode));
}

TEST_F(EntryStoreTest, LoadsNothingFromATruncatedFile) {
    ASSERT_FALSE(store.save(instance, mode, entry));
    const std::string file = temporary.content("widgethost/tiles/3.tile");
    for (std::size_t length = 0; length + 1 < file.size(); ++length) {
        temporary.write("widgethost/tiles/3.tile", file.substr(0, length));
        ASSERT_FALSE(store.load(instance, mode)) << length;
    }
}

TEST_F(EntryStoreTest, SaysInOneLineWhyNothingIsSaved) {
    temporary.write("file", "");
    platform::MemoryFileSystem full;
    full.limitRoom(100);
    const platform::FileSystem& disk = platform::DiskFileSystem::shared();
    for (const EntryStore& each :
         {EntryStore(disk, temporary.path("file/tiles")), EntryStore(disk, "tiles"), EntryStore(full, folder)}) {
        const auto failure = each.save(instance, mode, entry);
        ASSERT_TRUE(failure);
        EXPECT_THAT(failure->description, MatchesRegex("(cannot|there is no)[^\n]*"));
        EXPECT_FALSE(each.load(instance, mode));
        each.keepOnly({});
    }
}

TEST_F(EntryStoreTest, RemovesTheEntriesOfOtherTiles) {
    store.keepOnly({1});
    fs::create_directories(folder);
    for (const char* name : {"1.tile", "2.tile", "30.tile", ".1.tile.new", ".2.tile.new1", "notes.txt", "2.tile.bak"}) {
        temporary.write("widgethost/tiles/" + std::string(name), "");
    }
    store.keepOnly({1, 30, 99});
    EXPECT_EQ(temporary.names("widgethost/tiles"),
              (std::set<std::string>{"1.tile", "30.tile", ".1.tile.new", "notes.txt", "2.tile.bak"}));
}

} // namespace
} // namespace host
