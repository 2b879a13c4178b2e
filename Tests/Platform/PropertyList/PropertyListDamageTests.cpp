// Files that were cut off or changed: an error or some value, never a look outside of the bytes. What the sanitizers
// report is the verdict of most of these tests.

#include "Tests/Platform/PropertyList/BinaryFile.h"
#include "Tests/Platform/PropertyList/CanonicalText.h"

#include <gtest/gtest.h>

#include <array>

namespace platform {
namespace {

using namespace std::string_literals;

const std::array files = {
    "<?xml version='1.0'?><!DOCTYPE plist [<!ENTITY a \"b\">]><!--c--><plist a='b'><dict><key>a&amp;b</key>"
    "<array><string>ä<![CDATA[x]]></string><integer>-1</integer><date>2001-01-02T00:00:00Z</date><dict/>"
    "<data>\nAAEC\n</data><real>1.5</real></array><key>c</key><true/></dict></plist>"s,
    "{a=(b,\"c\\U00e4\\101\",<0f0f>,{});/**/'d'=e;//\n}"s,
    BinaryFile{.objects = {"\xD2\x01\x02\x03\x04"s, "\x51"s + "a", "\x62\xD8\x3D\xDE\x00"s, "\xA4\x05\x06\x07\x08"s,
                           "\x4F\x10\x10"s + "0123456789abcdef", "\x13\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF"s,
                           "\x33\x40\xF5\x18\x00\x00\x00\x00\x00"s, "\x22\x3F\xC0\x00\x00"s, "\xD0"s}}
        .bytes(),
};

TEST(PropertyListDamage, CutOffFilesAreErrors) {
    for (const std::string& file : files) {
        ASSERT_NE(canonicalText(file), "error");
        for (std::size_t size = 0; size < file.size(); ++size) {
            const std::string cut = canonicalText(std::string_view(file).substr(0, size));
            // The first characters of the binary form are a text for themselves.
            EXPECT_TRUE(cut == "error" || (file[0] == 'b' && size <= 8)) << size << " " << cut;
        }
    }
}

TEST(PropertyListDamage, ChangedBytesDoNoHarm) {
    std::size_t errors = 0;
    std::size_t values = 0;
    for (const std::string& file : files) {
        for (std::size_t offset = 0; offset < file.size(); ++offset) {
            for (int change = 1; change < 256; ++change) {
                std::string changed = file;
                changed[offset] = static_cast<char>(changed[offset] ^ change);
                ++(canonicalText(changed) == "error" ? errors : values);
            }
        }
    }
    EXPECT_GT(errors, 10'000U);
    EXPECT_GT(values, 10'000U);
}

} // namespace
} // namespace platform
