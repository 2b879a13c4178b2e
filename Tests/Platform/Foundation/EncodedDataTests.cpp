#include "Platform/Foundation/EncodedData.h"

#include <gtest/gtest.h>

namespace platform {
namespace {

using namespace std::string_literals;

EncodedData base64(std::string text) {
    return {Data::owning(std::move(text)), EncodedData::Encoding::base64};
}
EncodedData raw(std::string bytes) {
    return {Data::owning(std::move(bytes)), EncodedData::Encoding::raw};
}

TEST(EncodedData, ReadsAndWritesBase64) {
    const std::tuple<std::string, std::string, std::string> rows[]{
        {"AP+A/w==", "\0\xFF\x80\xFF"s, "AP+A/w=="},
        {" Z\n\tm9.\r\n-_v\xC3\xA4", "foo", "Zm9v"},
        // No padding, too little, too much, or more digits behind it.
        {"Zg", "f", "Zg=="},
        {"Zm8==", "fo", "Zm8="},
        {"Zg==Zm9v", "f", "Zg=="},
        {"=Zm9v", "", ""},
        // A lone digit has too few bits for a byte, and bits that are left over do not count.
        {"Zm9vY", "foo", "Zm9v"},
        {"Zh==", "f", "Zg=="},
        {"Zm9=", "fo", "Zm8="},
    };
    for (const auto& [stored, bytes, canonical] : rows) {
        EXPECT_EQ(base64(stored).decoded().bytes(), bytes) << stored;
        for (const EncodedData& data : {base64(stored), raw(bytes)}) {
            std::string text = ">";
            data.appendBase64(text);
            EXPECT_EQ(text, ">" + canonical) << stored;
        }
        EXPECT_EQ(raw(bytes), base64(stored)) << stored;
    }
    EXPECT_NE(base64("Zm9v"), base64("Zm9w"));
    EXPECT_NE(raw("Zm9v"), base64("Zm9v"));
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

} // namespace
} // namespace platform
