#include "Host/Pictures/PictureStore.h"

#include "Host/Layout/Measures.h"
#include "Host/Pictures/FaceMaker.h"
#include "Host/Pictures/StoredFace.h"
#include "Platform/Views/Shape.h"
#include "Platform/Views/Stack.h"
#include "Platform/Views/Text.h"
#include "Tests/Support/MemoryFileSystem.h"
#include "Tests/Support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/stat.h>

namespace host {
namespace {

namespace fs = std::filesystem;
using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::Not;

Instance instanceOf(const std::string& family, InstanceId id = 3) {
    return {.id = id,
            .extension = "net.foliovault.widgets",
            .kind = "FavoritesWidget",
            .family = family,
            .configuration = {{"group", "Work \"quoted\""}}};
}

Face faceOf(const Instance& instance, const FaceStyle& style) {
    static Renderer renderer;
    const platform::View view = platform::vStack(
        {}, {platform::text("Title").font(platform::headline), platform::text("12").font(platform::caption),
             platform::text("مرحبا\n\"ü\"").link("x:?a=b"), platform::circle(platform::Color::red)});
    Face face = makeFace(view, familySize(instance.family), style, renderer);
    face.made = {758'100'000.125};
    face.reload = {758'100'300};
    return face;
}

class PictureStoreTest : public testing::Test {
  protected:
    const platform::TemporaryFolder temporary;
    const fs::path folder = temporary.path("widgethost/tiles");
    const PictureStore store{platform::DiskFileSystem::shared(), folder};
    const Instance instance = instanceOf("medium");
    const Face face = faceOf(instance, {.scale = 2});

    static std::set<std::string> namesIn(const fs::path& path) {
        std::set<std::string> names;
        for (const auto& entry : fs::directory_iterator(path)) {
            names.insert(entry.path().filename());
        }
        return names;
    }
};

TEST_F(PictureStoreTest, BringsBackJustWhatWasSaved) {
    const std::vector<FaceStyle> styles{
        {},
        {.scale = 1.25},
        {.appearance = {.scheme = ColorScheme::dark, .mode = DrawingMode::tinted, .accent = Rgba{0.1, 0.2, 0.3}},
         .scale = 3},
        {.appearance = {.mode = DrawingMode::vibrant, .contrast = Contrast::high}, .scale = 1.5},
        {.appearance = {.redaction = Redaction::placeholder}, .direction = Direction::rightToLeft},
    };
    InstanceId id = 1;
    for (const FaceStyle& style : styles) {
        for (const char* family : {"small", "medium", "large", "extraLarge", "unheard-of"}) {
            const Instance tile = instanceOf(family, ++id);
            Face saved = faceOf(tile, style);
            if (id % 2 == 0) {
                saved.widgetURL = "x:\n" + std::string(family);
            }
            EXPECT_EQ(store.load(tile), std::nullopt);
            EXPECT_FALSE(store.save(tile, saved));
            EXPECT_TRUE(store.load(tile) == saved) << family << " at " << style.scale;
        }
    }
}

TEST_F(PictureStoreTest, ShowsNothingThatWasMadeForSomethingElse) {
    ASSERT_FALSE(store.save(instance, face));
    const auto loaded = [&](auto change) {
        Instance other = instance;
        change(other);
        return store.load(other).has_value();
    };
    EXPECT_TRUE(loaded([](Instance& i) { i.position = Position{4, 5}; }));
    EXPECT_FALSE(loaded([](Instance& i) { i.id = 4; }));
    EXPECT_FALSE(loaded([](Instance& i) { i.extension += "2"; }));
    EXPECT_FALSE(loaded([](Instance& i) { i.kind = "TipsWidget"; }));
    EXPECT_FALSE(loaded([](Instance& i) { i.family = "unheard-of"; }));
    EXPECT_FALSE(loaded([](Instance& i) { i.configuration["group"] = "Home"; }));
    EXPECT_FALSE(loaded([](Instance& i) { i.configuration["filter"] = "all"; }));
    EXPECT_FALSE(loaded([](Instance& i) { i.configuration.clear(); }));
}

TEST_F(PictureStoreTest, ReadsNothingFromBrokenFiles) {
    const std::string file = storedFace(face, instance);
    ASSERT_TRUE(readStoredFace(file, instance));
    for (std::size_t length = 0; length < file.size(); length += length < 1500 ? 1 : 97) {
        ASSERT_FALSE(readStoredFace(std::string_view(file).substr(0, length), instance)) << length;
    }
    const auto replaced = [&](const std::string& from, const std::string& to) {
        std::string changed = file;
        const std::size_t at = changed.find(from);
        EXPECT_NE(at, std::string::npos) << from;
        return changed.replace(at, from.size(), to);
    };
    EXPECT_TRUE(readStoredFace(replaced("{\"version\"", "{\"more\":[],\"version\""), instance));
    const std::vector<std::pair<std::string, std::string>> changes{
        {"\"version\":1", "\"version\":2"},
        {"\"scale\":2", "\"scale\":1"},
        {"\"scale\":2", "\"scale\":1e9"},
        {"\"scale\":2", "\"scale\":-2"},
        {"\"scale\":2", "\"scale\":\"2\""},
        {"\"light\"", "\"dim\""},
        {"\"made\"", "\"maid\""},
        {"\"reload\":758100300", "\"reload\":null"},
        {"\"parts\":[", "\"parts\":[7,"},
        {"\"role\":\"link\"", "\"role\":\"leek\""},
        {"\"name\":\"Title\"", "\"name\":\"\""},
        {"\"frame\":[", "\"frame\":[1e300,"},
        {"\"frame\":[", "\"frame\":[0,"},
        {"\"configuration\":{", "\"configuration\":{\"group\":\"Work \\\"quoted\\\"\","},
        {"\"parts\"", "\"accent\":[0,0,2,1],\"parts\""},
        {"\"parts\"", "\"widgetURL\":5,\"parts\""},
        {"PNG", "PNK"},
        // Of another kind, though of the same size.
        {std::string("\x08\x06\0\0\0", 5), std::string("\x08\x06\0\0\1", 5)},
        {"IDAT", "IDAX"},
    };
    for (const auto& [from, to] : changes) {
        EXPECT_FALSE(readStoredFace(replaced(from, to), instance)) << from << " to " << to;
    }
    std::string flipped = file;
    flipped[file.size() / 2] = static_cast<char>(flipped[file.size() / 2] ^ 0x10);
    EXPECT_FALSE(readStoredFace(flipped, instance));
}

TEST_F(PictureStoreTest, RefusesWhatIsTooMuch) {
    Face many = face;
    many.parts.resize(greatestPartCount, {.name = "part"});
    EXPECT_TRUE(readStoredFace(storedFace(many, instance), instance) == many);
    many.parts.push_back({.name = "one more"});
    Face wordy = face;
    wordy.widgetURL = std::string(greatestFaceHead, 'x');
    for (const Face& refused : {many, wordy, Face{}}) {
        const auto failure = store.save(instance, refused);
        ASSERT_TRUE(failure);
        EXPECT_THAT(failure->description, AllOf(HasSubstr("3.tile"), Not(HasSubstr("\n"))));
    }
    EXPECT_FALSE(fs::exists(folder));
}

TEST_F(PictureStoreTest, KeepsOthersOut) {
    fs::create_directories(folder);
    ASSERT_FALSE(store.save(instance, face));
    struct stat status {};
    ASSERT_EQ(stat(folder.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0700U);
    ASSERT_EQ(stat((folder / "3.tile").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0600U);
}

TEST_F(PictureStoreTest, SaysInOneLineWhyNothingIsSaved) {
    temporary.write("file", "");
    const PictureStore inFile(platform::DiskFileSystem::shared(), temporary.path("file/tiles"));
    const PictureStore nowhere(platform::DiskFileSystem::shared(), "tiles");
    platform::MemoryFileSystem full;
    full.limitRoom(1000);
    const PictureStore onFull(full, folder);
    for (const PictureStore* each : {&inFile, &nowhere, &onFull}) {
        const auto failure = each->save(instance, face);
        ASSERT_TRUE(failure);
        EXPECT_THAT(failure->description, AllOf(Not(HasSubstr("\n")), testing::ContainsRegex("^(cannot|there is no)")));
        EXPECT_EQ(each->load(instance), std::nullopt);
        each->keepOnly({});
    }
}

TEST_F(PictureStoreTest, KeepsOnlyThePicturesOfTilesThatAreThere) {
    store.keepOnly({1});
    for (const InstanceId id : {1U, 2U, 30U}) {
        ASSERT_FALSE(store.save(instanceOf("medium", id), face));
    }
    for (const char* name :
         {".1.tile.new", ".2.tile.new", "notes.txt", "x2.tile", "2.tile.bak", ".tile", "4294967296.tile"}) {
        temporary.write("widgethost/tiles/" + std::string(name), "");
    }
    store.keepOnly({1, 30, 99});
    EXPECT_EQ(namesIn(folder), (std::set<std::string>{"1.tile", "30.tile", ".1.tile.new", "notes.txt", "x2.tile",
                                                      "2.tile.bak", ".tile", "4294967296.tile"}));
}

} // namespace
} // namespace host
