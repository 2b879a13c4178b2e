// A value as one line of text that holds all of it, so that the values that two readers make of a file can be compared:
//
//   "text"  12  r0.5  true  d86400 (seconds since 2001)  <0fa0>  [ , ]  {"key": , } sorted by key  null  uid  set
//
// An integer outside of 64 signed bits is written as r with its value. reference.py writes the same.
#pragma once

#include "Platform/PropertyList/PropertyList.h"

#include <gtest/gtest.h>

#include <array>
#include <charconv>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

inline std::string hexadecimal(std::string_view bytes) {
    constexpr std::string_view digits = "0123456789abcdef";
    std::string text;
    for (const char byte : bytes) {
        const auto value = static_cast<unsigned char>(byte);
        text += digits[value >> 4U];
        text += digits[value & 0x0FU];
    }
    return text;
}

inline std::string inQuotes(std::string_view text) {
    std::string result = "\"";
    for (const char character : text) {
        const bool isPlain = character != '"' && character != '\\' && static_cast<unsigned char>(character) >= 0x20;
        result += isPlain ? std::string(1, character) : "\\" + hexadecimal({&character, 1});
    }
    return result + "\"";
}

/// Returns the fewest digits that tell the number from every other.
inline std::string shortest(double number) {
    std::array<char, 32> digits;
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number, std::chars_format::scientific);
    return {digits.data(), end.ptr};
}

inline std::string canonicalText(const PropertyListValue& value) {
    using Kind = PropertyListValue::Kind;
    std::string text;
    const auto add = [&text](const std::string& child) { text += (text.empty() ? "" : ", ") + child; };
    switch (value.kind()) {
    case Kind::string:
        return inQuotes(value.string().value());
    case Kind::integer:
        return value.integer() ? std::to_string(*value.integer()) : "r" + shortest(value.number().value());
    case Kind::real:
        return "r" + shortest(value.number().value());
    case Kind::boolean:
        return value.boolean().value() ? "true" : "false";
    case Kind::date:
        return "d" + shortest(value.date().value().secondsSinceReferenceDate);
    case Kind::data:
        return "<" + hexadecimal(value.data().value().decoded().bytes()) + ">";
    case Kind::array:
        value.forEachElement([&add](const PropertyListValue& element) {
            add(canonicalText(element));
            return true;
        });
        return "[" + text + "]";
    case Kind::dictionary: {
        std::map<std::string, std::string> entries;
        value.forEachEntry([&entries](const std::string& key, const PropertyListValue& entry) {
            entries[key] = canonicalText(entry);
            return true;
        });
        for (const auto& [key, entry] : entries) {
            add(inQuotes(key) + ": " + entry);
        }
        return "{" + text + "}";
    }
    case Kind::set:
        return "set";
    case Kind::null:
        return "null";
    case Kind::uid:
        return "uid";
    }
    return "";
}

/// Returns the canonical text of what `file` holds, or "error".
inline std::string canonicalText(std::string_view file) {
    const auto list = PropertyList::parse(Data::owning(std::string(file)));
    return list ? canonicalText(list->root()) : "error";
}

/// Expects each file to have the canonical text beside it.
inline void expectRead(std::initializer_list<std::pair<std::string_view, std::string_view>> rows) {
    for (const auto& [file, expected] : rows) {
        EXPECT_EQ(canonicalText(file), expected) << file << " (" << hexadecimal(file) << ")";
    }
}

/// Expects each file to be an error.
template <typename... Files>
void expectRefused(const Files&... files) {
    (expectRead({{files, "error"}}), ...);
}

/// `number` in `width` bytes, big-endian; what does not fit is cut off.
inline std::string bigEndian(std::uint64_t number, unsigned width) {
    std::string bytes;
    for (unsigned index = width; index-- > 0;) {
        bytes += static_cast<char>(index < 8 ? number >> 8 * index : 0);
    }
    return bytes;
}

/// A binary property list made by hand, valid or not.
struct BinaryFile {
    /// Each with its marker.
    std::vector<std::string> objects;
    std::uint64_t root = 0;
    unsigned offsetSize = 2;
    unsigned referenceSize = 1;
    /// Wrong values for the trailer.
    std::optional<std::uint64_t> objectCount = std::nullopt;
    std::optional<std::uint64_t> tableOffset = std::nullopt;
    /// Wrong offsets, by number of object.
    std::vector<std::pair<std::size_t, std::uint64_t>> offsets = {};

    std::string bytes() const {
        std::string file = "bplist00";
        std::vector<std::uint64_t> offsetsInFile;
        for (const std::string& object : objects) {
            offsetsInFile.push_back(file.size());
            file += object;
        }
        for (const auto& [index, offset] : offsets) {
            offsetsInFile[index] = offset;
        }
        const std::uint64_t table = file.size();
        for (const std::uint64_t offset : offsetsInFile) {
            file += bigEndian(offset, offsetSize);
        }
        return file + std::string(6, '\0') + bigEndian(offsetSize, 1) + bigEndian(referenceSize, 1) +
               bigEndian(objectCount.value_or(objects.size()), 8) + bigEndian(root, 8) +
               bigEndian(tableOffset.value_or(table), 8);
    }
};

} // namespace platform
