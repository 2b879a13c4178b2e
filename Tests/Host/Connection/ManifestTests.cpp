#include "Host/Connection/Manifest.h"

#include "Tests/Support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace host {
namespace {

platform::Outcome<Manifest> manifestWith(const std::string& members) {
    const platform::TemporaryFolder folder;
    return readManifest(folder.write("x.json", R"({"identifier": "x", "executable": "y")" +
                                                   (members.empty() ? "" : ", " + members) + "}"));
}

TEST(Manifest, GrantsNothingUnlessItSaysSo) {
    for (const char* members : {"", R"("network": 1, "reads": "Library")"}) {
        const auto manifest = manifestWith(members);
        ASSERT_TRUE(manifest) << members;
        EXPECT_FALSE(manifest->network) << members;
        EXPECT_THAT(manifest->reads, testing::IsEmpty()) << members;
    }
    const auto manifest = manifestWith(R"("reads": ["Library/A B", ".config/x/", "..x"], "network": true)");
    ASSERT_TRUE(manifest) << manifest.error().message;
    EXPECT_THAT(manifest->reads, testing::ElementsAre("Library/A B", ".config/x/", "..x"));
    EXPECT_TRUE(manifest->network);
    EXPECT_EQ(manifest->name, "x");
    EXPECT_EQ(manifestWith(R"("name": "Ten Widgets")")->name, "Ten Widgets");
    for (const char* folder : {R"("")", R"("././")", R"("..")", R"("a/../..")", R"("a/..")", R"("/etc")", "7"}) {
        EXPECT_FALSE(manifestWith(std::string(R"("reads": ["Library", )") + folder + "]")) << folder;
    }
}

} // namespace
} // namespace host
