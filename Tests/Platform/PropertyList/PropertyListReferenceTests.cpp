// Generated property lists, read by this library and by Python's plistlib: both must see the same.

#include "Tests/Platform/PropertyList/CanonicalText.h"

#include "Platform/Foundation/FileSystem.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include <unistd.h>

namespace platform {
namespace {

namespace fs = std::filesystem;

class PropertyListReference : public testing::Test {
  protected:
    static void SetUpTestSuite() {
        folder = fs::temp_directory_path() / ("property-list-reference-" + std::to_string(getpid()));
        fs::create_directory(folder);
        const std::string reference = "/usr/bin/python3 '" PROJECT_FOLDER "/Tests/Platform/PropertyList/reference.py' ";
        ASSERT_EQ(std::system((reference + "make '" + folder.string() + "' 120").c_str()), 0);
        ASSERT_EQ(std::system((reference + "read '" + folder.string() + "'").c_str()), 0);
    }
    static void TearDownTestSuite() { fs::remove_all(folder); }

    static Data content(const fs::path& path) { return DiskFileSystem::shared().read(path.string()).value(); }

    static fs::path folder;
};

fs::path PropertyListReference::folder;

TEST_F(PropertyListReference, PlistlibSeesTheSame) {
    int count = 0;
    for (const fs::directory_entry& file : fs::directory_iterator(folder)) {
        if (file.path().extension() != ".reference") {
            EXPECT_EQ(canonicalText(content(file.path())), content(file.path().string() + ".reference").bytes())
                << file.path();
            ++count;
        }
    }
    EXPECT_EQ(count, 240);
}

} // namespace
} // namespace platform
