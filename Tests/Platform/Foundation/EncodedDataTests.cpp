#include "Platform/Foundation/EncodedData.h"

#include <gtest/gtest.h>

#include <array>

namespace platform {
namespace {

using namespace std::string_literals;

EncodedData base64(std::string text) {
    return {Data::owning(std::move(text)), EncodedData::Encoding::base64};
}
EncodedData raw(std::string bytes) {
    return {Data::owning(std::move(bytes)), EncodedData::Encoding::raw};
}

std::string canonical(const EncodedData& data) {
    std::string text = ">";
    data.appendBase64(text);
    return text;
}

struct Case {
    std::string raw;
    std::string bytes;
    std::string canonical;
};

TEST(EncodedData, ReadsAndWritesBase64) {
    const std::array cases = {
        Case{"", "", ""},
        Case{"Zg==", "f", "Zg=="},
        Case{"Zm9v", "foo", "Zm9v"},
        Case{"Zm9vYg==", "foob", "Zm9vYg=="},
        Case{"Zm9vYmFy", "foobar", "Zm9vYmFy"},
        Case{"AP+A/w==", "\0\xFF\x80\xFF"s, "AP+A/w=="},
        // White space and what is no digit.
        Case{" Z\n\tm9\r\nv ", "foo", "Zm9v"},
        Case{"Z.m-9_v", "foo", "Zm9v"},
        Case{"Zm\xC3\xA4"
             "9v"s,
             "foo", "Zm9v"},
        // No padding, too little, too much, or more digits behind it.
        Case{"Zg", "f", "Zg=="},
        Case{"Zm8==", "fo", "Zm8="},
        Case{"Zg==Zm9v", "f", "Zg=="},
        Case{"=Zm9v", "", ""},
        // A lone digit has too few bits for a byte, and bits that are left over do not count.
        Case{"Z", "", ""},
        Case{"Zm9vY", "foo", "Zm9v"},
        Case{"Zh==", "f", "Zg=="},
        Case{"Zm9=", "fo", "Zm8="},
    };
    for (const Case& tested : cases) {
        EXPECT_EQ(base64(tested.raw).decoded().bytes(), tested.bytes) << tested.raw;
        EXPECT_EQ(canonical(base64(tested.raw)), ">" + tested.canonical) << tested.raw;
        EXPECT_EQ(canonical(raw(tested.bytes)), ">" + tested.canonical) << tested.raw;
        EXPECT_EQ(raw(tested.bytes), base64(tested.raw)) << tested.raw;
    }
}

TEST(EncodedData, EveryLengthAndEveryByteSurvives) {
    std::string bytes;
    for (int length = 0; length < 600; ++length) {
        std::string text;
        raw(bytes).appendBase64(text);
        ASSERT_EQ(base64(text).decoded().bytes(), bytes) << length;
        bytes += static_cast<char>(length * 7);
    }
}

TEST(EncodedData, IsEqualIfTheBytesAre) {
    EXPECT_EQ(base64("Zm9v"), base64("Zm\n9v"));
    EXPECT_NE(base64("Zm9v"), base64("Zm9w"));
    EXPECT_NE(raw("Zm9v"), base64("Zm9v"));
    EXPECT_NE(raw("foo"), raw("fo"));
}

} // namespace
} // namespace platform
