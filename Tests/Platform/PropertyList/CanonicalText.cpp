#include "Tests/Platform/PropertyList/CanonicalText.h"

#include <array>
#include <charconv>
#include <map>

namespace platform {

std::string hexadecimal(std::string_view bytes) {
    constexpr std::string_view digits = "0123456789abcdef";
    std::string text;
    for (const char byte : bytes) {
        const auto value = static_cast<unsigned char>(byte);
        text += digits[value >> 4U];
        text += digits[value & 0x0FU];
    }
    return text;
}

namespace {

std::string inQuotes(std::string_view text) {
    std::string result = "\"";
    for (const char character : text) {
        if (character == '"' || character == '\\' || static_cast<unsigned char>(character) < 0x20) {
            result += "\\" + hexadecimal({&character, 1});
        } else {
            result += character;
        }
    }
    return result + "\"";
}

/// With as many digits as it takes to tell the number from every other.
std::string shortest(double number) {
    std::array<char, 32> digits;
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number, std::chars_format::scientific);
    return {digits.data(), end.ptr};
}

} // namespace

std::string canonicalText(const PropertyListValue& value) {
    using Kind = PropertyListValue::Kind;
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
    case Kind::array: {
        std::string text;
        value.forEachElement([&text](const PropertyListValue& element) {
            text += (text.empty() ? "" : ", ") + canonicalText(element);
            return true;
        });
        return "[" + text + "]";
    }
    case Kind::dictionary: {
        std::map<std::string, std::string> entries;
        value.forEachEntry([&entries](const std::string& key, const PropertyListValue& entry) {
            entries[key] = canonicalText(entry);
            return true;
        });
        std::string text;
        for (const auto& [key, entry] : entries) {
            text += (text.empty() ? "" : ", ") + inQuotes(key) + ": " + entry;
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

std::string canonicalText(const Data& file) {
    const auto list = PropertyList::parse(file);
    return list ? canonicalText(list->root()) : "error";
}

std::string canonicalText(std::string_view file) {
    return canonicalText(Data::owning(std::string(file)));
}

} // namespace platform
