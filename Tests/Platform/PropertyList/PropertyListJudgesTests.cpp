// Generated property lists, read by this library, by Python's plistlib and by libplist: all three must see the same.

#include "Tests/Platform/PropertyList/CanonicalText.h"

#include "Platform/Foundation/FileSystem.h"

#include <gtest/gtest.h>
#include <plist/plist.h>

#include <cstdlib>
#include <filesystem>
#include <memory>

#include <unistd.h>

namespace platform {
namespace {

namespace fs = std::filesystem;

struct PlistDeleter {
    void operator()(void* node) const { plist_free(node); }
};
using OwnedPlist = std::unique_ptr<void, PlistDeleter>;

/// Where `value` is not what `node` is, as a path; empty if they are the same.
std::string difference(const PropertyListValue& value, plist_t node);

std::string elementsDifference(const PropertyListValue& array, plist_t node) {
    std::string result;
    std::uint32_t index = 0;
    if (array.arrayCount() != plist_array_get_size(node)) {
        return "/count";
    }
    array.forEachElement([&](const PropertyListValue& element) {
        result = difference(element, plist_array_get_item(node, index));
        if (!result.empty()) {
            result.insert(0, "/" + std::to_string(index));
        }
        ++index;
        return result.empty();
    });
    return result;
}

std::string entriesDifference(const PropertyListValue& dictionary, plist_t node) {
    std::string result;
    std::uint32_t count = 0;
    dictionary.forEachEntry([&](const std::string& key, const PropertyListValue& entry) {
        plist_t other = plist_dict_get_item(node, key.c_str());
        result = other == nullptr ? "/missing" : difference(entry, other);
        if (!result.empty()) {
            result.insert(0, "/" + key);
        }
        ++count;
        return result.empty();
    });
    return result.empty() && count != plist_dict_get_size(node) ? "/count" : result;
}

bool isSameScalar(const PropertyListValue& value, plist_t node) {
    switch (plist_get_node_type(node)) {
    case PLIST_BOOLEAN: {
        std::uint8_t boolean = 0;
        plist_get_bool_val(node, &boolean);
        return value.boolean() == (boolean != 0);
    }
    case PLIST_UINT: {
        // It has no other way to tell a negative number.
        std::uint64_t integer = 0;
        plist_get_uint_val(node, &integer);
        return value.integer() ? static_cast<std::uint64_t>(*value.integer()) == integer
                               : value.number() == static_cast<double>(integer);
    }
    case PLIST_REAL: {
        double real = 0;
        plist_get_real_val(node, &real);
        return value.kind() == PropertyListValue::Kind::real && value.number() == real;
    }
    case PLIST_STRING: {
        std::uint64_t size = 0;
        const char* const text = plist_get_string_ptr(node, &size);
        return value.string() == std::string(text, size);
    }
    case PLIST_DATA: {
        std::uint64_t size = 0;
        const char* const bytes = plist_get_data_ptr(node, &size);
        return value.data() && value.data()->decoded().bytes() == std::string_view(bytes, size);
    }
    case PLIST_DATE: {
        std::int32_t seconds = 0;
        std::int32_t microseconds = 0;
        plist_get_date_val(node, &seconds, &microseconds);
        // Dates beyond its 32 bits are left to the other judge.
        return value.date() && (std::abs(value.date()->secondsSinceReferenceDate) > 1e9 ||
                                value.date()->secondsSinceReferenceDate == seconds);
    }
    default:
        return false;
    }
}

std::string difference(const PropertyListValue& value, plist_t node) {
    switch (plist_get_node_type(node)) {
    case PLIST_ARRAY:
        return elementsDifference(value, node);
    case PLIST_DICT:
        return entriesDifference(value, node);
    default:
        return isSameScalar(value, node) ? "" : "/value";
    }
}

class PropertyListJudges : public testing::Test {
  protected:
    static void SetUpTestSuite() {
        folder = fs::temp_directory_path() / ("property-list-judges-" + std::to_string(getpid()));
        fs::create_directory(folder);
        const std::string judge = "/usr/bin/python3 '" PROJECT_FOLDER "/Tests/Platform/PropertyList/judge.py' ";
        ASSERT_EQ(std::system((judge + "make '" + folder.string() + "' 120").c_str()), 0);
        ASSERT_EQ(std::system((judge + "read '" + folder.string() + "'").c_str()), 0);
    }
    static void TearDownTestSuite() { fs::remove_all(folder); }

    static Data content(const fs::path& path) { return DiskFileSystem::shared().read(path.string()).value(); }

    template <typename Check>
    static void forEachFile(Check&& check) {
        int count = 0;
        for (const fs::directory_entry& file : fs::directory_iterator(folder)) {
            if (file.path().extension() != ".judged") {
                check(file.path());
                ++count;
            }
        }
        EXPECT_EQ(count, 240);
    }

    static fs::path folder;
};

fs::path PropertyListJudges::folder;

TEST_F(PropertyListJudges, PlistlibSeesTheSame) {
    forEachFile([](const fs::path& path) {
        EXPECT_EQ(canonicalText(content(path)), content(path.string() + ".judged").bytes()) << path;
    });
}

TEST_F(PropertyListJudges, LibplistSeesTheSame) {
    forEachFile([](const fs::path& path) {
        const Data file = content(path);
        const auto list = PropertyList::parse(file);
        ASSERT_TRUE(list) << path;
        plist_t root = nullptr;
        const auto parse = file.bytes().starts_with("bplist") ? plist_from_bin : plist_from_xml;
        parse(file.bytes().data(), static_cast<std::uint32_t>(file.size()), &root);
        const OwnedPlist owned(root);
        ASSERT_NE(root, nullptr) << path;
        EXPECT_EQ(difference(list->root(), root), "") << path;
    });
}

} // namespace
} // namespace platform
