#include "Platform/Foundation/JsonWriter.h"

#include "Platform/Foundation/EncodedData.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <bit>
#include <cmath>
#include <limits>
#include <random>

namespace platform {
namespace {

using namespace std::string_literals;

std::string written(std::string_view text) {
    std::string out;
    JsonWriter(out).text(text);
    return out;
}

std::string written(double number) {
    std::string out;
    JsonWriter(out).number(number);
    return out;
}

TEST(JsonWriter, EscapesAndMendsText) {
    const std::string no = "\xEF\xBF\xBD";
    const std::pair<std::string, std::string> texts[]{
        {"\"\\/", R"(\"\\/)"},
        {"\n\r\t\b\f\x1F\x7F", "\\n\\r\\t\\u0008\\u000c\\u001f\x7F"},
        {{"a\0b", 3}, R"(a\u0000b)"},
        {"ß€😀\xEF\xBF\xBF", "ß€😀\xEF\xBF\xBF"},
        // One U+FFFD for each part that could have begun a character.
        {"a\xF1\x80\x80\xE1\x80\xC2.\x80.\x80\xBF.\xE2\"",
         "a" + no + no + no + "." + no + "." + no + no + "." + no + "\\\""},
        {"\xC0\xAF\xED\xA0\x80\xFF", no + no + no + no + no + no},
    };
    for (const auto& [text, expected] : texts) {
        EXPECT_EQ(written(text), '"' + expected + '"');
    }
    EXPECT_EQ(written(std::string_view("ä").substr(0, 1)), '"' + no + '"') << "looks behind its text";
}

TEST(JsonWriter, WritesShortNumbersThatComeBackBitForBit) {
    const std::pair<double, std::string> numbers[]{
        {-0.0, "0"},
        {0.1 + 0.2, "0.30000000000000004"},
        {1e15, "1000000000000000"},
        {1e16, "1e+16"},
        {-1e-7, "-0.0000001"},
        {1e-8, "1e-08"},
        {std::numeric_limits<double>::infinity(), "0"},
        {std::numeric_limits<double>::quiet_NaN(), "0"},
    };
    for (const auto& [number, expected] : numbers) {
        EXPECT_EQ(written(number), expected);
    }
    std::mt19937_64 random(1);
    for (int round = 0; round < 20'000; ++round) {
        const auto number = std::bit_cast<double>(random());
        if (std::isfinite(number)) {
            ASSERT_EQ(nlohmann::json::parse(written(number)).get<double>(), number);
        }
    }
}

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
        // Bits that are left over do not count.
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

} // namespace
} // namespace platform
