#include "Tests/Platform/PropertyList/CanonicalText.h"

#include <gtest/gtest.h>

#include <utility>

namespace platform {
namespace {

using namespace std::string_literals;

std::string ones(std::size_t count) {
    return std::string(count, '\xFF');
}

std::string zeros(std::size_t count) {
    return std::string(count, '\0');
}

/// What the files of PropertyListReference do not have.
TEST(BinaryPropertyList, ReadsEveryKindOfObject) {
    const std::pair<std::string, std::string_view> rows[]{
        {"\x00"s, "null"},
        {"\x12"s + ones(3) + "\xFE", "4294967294"},
        {"\x14"s + ones(16), "-1"},
        {"\x14"s + zeros(8) + "\x7F" + ones(7), "9223372036854775807"},
        {"\x14"s + zeros(7) + "\x01" + zeros(8), "r1.8446744073709552e+19"},
        {"\x14\x80"s + zeros(15), "r-1.7014118346046923e+38"},
        {"\x22\x3F\xC0\x00\x00"s, "r1.5e+00"},
        {"\x4F\x11\x00\x01\xAB"s, "<ab>"},
        {"\x4F\x12\x00\x00\x00\x01\xAB"s, "<ab>"},
        {"\x4F\x13\x00\x00\x00\x00\x00\x00\x00\x01\xAB"s, "<ab>"},
        {"\x5F\x10\x03"s + "a b", "\"a b\""},
        {"\x62\xD8\x3D\x00\x61"s, "\"\xEF\xBF\xBD\x61\""},
        {"\x61\xDE\x00"s, "\"\xEF\xBF\xBD\""},
        {"\x80\x05"s, "uid"},
        {"\x8F"s + zeros(16), "uid"},
        {"\xC0"s, "set"},
        {"\xDF\x10\x00"s, "{}"},
    };
    for (const auto& [object, expected] : rows) {
        EXPECT_EQ(canonicalText(BinaryFile{.objects = {object}}.bytes()), expected) << hexadecimal(object);
    }
    const auto expectRefusedObjects = [](const auto&... objects) {
        expectRefused(BinaryFile{.objects = {objects}}.bytes()...);
    };
    expectRefusedObjects("\x01"s, "\x0F"s, "\x15"s + zeros(32), "\x21\x00\x00"s, "\x24"s + zeros(16), "\x30\x00"s,
                         "\x32\x00\x00\x00\x00"s, "\x71"s + "a", "\x90"s, "\xB0"s, "\xE0"s, "\xFF"s, "\x51\x80"s,
                         "\x5F\x10\x50"s + std::string(79, 'a') + "\xE4", "\x11\x00"s, "\x33"s + zeros(7),
                         "\x53"s + "ab", "\x62\x00\x61\x00"s, "\x4F"s, "\x4F\x10"s, "\x4F\x09"s, "\x4F\x50"s,
                         "\x4F\x14"s + zeros(16), "\x4F\x13"s + ones(8), "\x5F\x13\x80"s + zeros(7),
                         "\xDF\x13\x80"s + zeros(7), "\xA1"s, "\xA1\x01"s, "\xC1\x01"s, "\xD1\x00\x01"s);
}

TEST(BinaryPropertyList, TakesOffsetsAndReferencesOfEveryWidth) {
    for (unsigned offsetSize = 0; offsetSize <= 9; ++offsetSize) {
        for (unsigned referenceSize = 0; referenceSize <= 9; ++referenceSize) {
            const auto reference = [referenceSize](std::uint64_t index) { return bigEndian(index, referenceSize); };
            const BinaryFile file{.objects = {"\xD2"s + reference(1) + reference(2) + reference(3) + reference(1),
                                              "\x51"s + "a", "\x51"s + "b", "\xA1"s + reference(1)},
                                  .offsetSize = offsetSize,
                                  .referenceSize = referenceSize};
            const bool isAllowed = offsetSize >= 1 && offsetSize <= 8 && referenceSize >= 1 && referenceSize <= 8;
            EXPECT_EQ(canonicalText(file.bytes()), isAllowed ? R"({"a": ["a"], "b": "a"})" : "error")
                << offsetSize << " " << referenceSize;
        }
    }
}

TEST(BinaryPropertyList, RefusesWhatDoesNotHoldTogether) {
    const std::string text = "\x51"s + "a";
    const std::vector<std::pair<std::string_view, BinaryFile>> cases = {
        {"no objects", {.objects = {}}},
        {"a root beyond the objects", {.objects = {text}, .root = 1}},
        {"more objects than bytes", {.objects = {text}, .objectCount = 1000}},
        {"a count that overflows the table's size", {.objects = {text}, .objectCount = ~std::uint64_t{0} / 2 + 2}},
        {"a table within the header", {.objects = {text}, .tableOffset = 7}},
        {"a table that reaches into the trailer", {.objects = {text, text}, .tableOffset = 13}},
        {"a table beyond the file", {.objects = {text}, .tableOffset = ~std::uint64_t{0}}},
        {"an object that ends within the table", {.objects = {"\x01"s + "12345678", "\x53"s + "ab"}, .root = 1}},
        {"an object within the header", {.objects = {text}, .offsets = {{0, 7}}}},
        {"an object within the table", {.objects = {text}, .offsets = {{0, 10}}}},
        {"an object beyond the file", {.objects = {text}, .offsets = {{0, 0xFFFF}}}},
        {"an array within itself", {.objects = {"\xA1\x00"s}}},
        {"a set within itself", {.objects = {"\xC1\x00"s}}},
        {"a dictionary within itself", {.objects = {"\xD1\x01\x00"s, text}}},
        {"a cycle of three", {.objects = {"\xA1\x01"s, "\xD1\x03\x02"s, "\xC1\x00"s, text}}},
        {"a key that is an integer", {.objects = {"\xD1\x01\x01"s, "\x10\x05"s}}},
        {"a key that is an array", {.objects = {"\xD1\x01\x02"s, "\xA0"s, text}}},
        {"a key that is damaged", {.objects = {"\xD1\x01\x02"s, "\x51\x80"s, text}}},
        {"a value deep down that is damaged",
         {.objects = {"\xA2\x01\x01"s, "\xA1\x02"s, "\xD1\x03\x04"s, text, "\x01"s}}},
    };
    for (const auto& [what, file] : cases) {
        EXPECT_EQ(canonicalText(file.bytes()), "error") << what;
    }
    const std::pair<BinaryFile, std::string_view> unusual[]{
        {{.objects = {text, "\xA1\x00"s}, .root = 1}, R"(["a"])"},
        {{.objects = {"\xA3\x01\x01\x02"s, "\xD1\x02\x02"s, text}}, R"([{"a": "a"}, {"a": "a"}, "a"])"},
        // Damaged, beyond the file, a cycle: but nothing refers to them.
        {{.objects = {text, "\x01"s, "\x51\x80"s, "\xA1\x03"s, text}, .offsets = {{4, 0xFFFF}}}, R"("a")"},
        {{.objects = {"\xD2\x01\x01\x02\x03"s, text, "\x08"s, "\x09"s}}, R"({"a": true})"},
        {{.objects = {"\xD2\x01\x02\x03\x04"s, "\x61\x00\xE4"s, text, "\x08"s, "\x09"s}}, R"({"a": true, "ä": false})"},
    };
    for (const auto& [file, expected] : unusual) {
        EXPECT_EQ(canonicalText(file.bytes()), expected);
    }
    std::string version = unusual[0].first.bytes();
    version[7] = '1';
    EXPECT_EQ(canonicalText(version), R"(["a"])");
}

} // namespace
} // namespace platform
