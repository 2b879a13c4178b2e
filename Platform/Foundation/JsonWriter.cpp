#include "Platform/Foundation/JsonWriter.h"

#include "Platform/Foundation/EncodedData.h"
#include "Platform/Foundation/Utf8.h"

#include <array>
#include <charconv>
#include <cmath>

namespace platform {

namespace {

void appendEscaped(std::string& out, char character) {
    constexpr std::string_view named = "\"\\\n\r\t";
    constexpr std::string_view names = "\"\\nrt";
    constexpr std::string_view digits = "0123456789abcdef";
    out += '\\';
    if (const std::size_t index = named.find(character); index != std::string_view::npos) {
        out += names[index];
    } else {
        const auto code = static_cast<unsigned char>(character);
        out += "u00";
        out += digits[code >> 4U];
        out += digits[code & 0xFU];
    }
}

void appendText(std::string& out, std::string_view text) {
    out += '"';
    std::size_t runBegin = 0;
    std::size_t at = 0;
    const auto appendRun = [&] { out.append(text.data() + runBegin, at - runBegin); };
    while (at < text.size()) {
        const auto byte = static_cast<unsigned char>(text[at]);
        if (byte >= 0x20 && byte < 0x80 && byte != '"' && byte != '\\') {
            ++at;
        } else if (byte < 0x80) {
            appendRun();
            appendEscaped(out, text[at]);
            runBegin = ++at;
        } else {
            const Utf8Sequence sequence = leadingUtf8Sequence(text.substr(at));
            if (!sequence.isCharacter) {
                appendRun();
                out += utf8ReplacementCharacter;
                runBegin = at + sequence.length;
            }
            at += sequence.length;
        }
    }
    appendRun();
    out += '"';
}

} // namespace

void JsonWriter::separate() {
    if (needsComma_) {
        out_ += ',';
    }
    needsComma_ = true;
}

JsonWriter& JsonWriter::begin(char bracket) {
    separate();
    out_ += bracket;
    needsComma_ = false;
    return *this;
}

JsonWriter& JsonWriter::end(char bracket) {
    out_ += bracket;
    needsComma_ = true;
    return *this;
}

JsonWriter& JsonWriter::key(std::string_view name) {
    separate();
    out_.append("\"").append(name).append("\":");
    needsComma_ = false;
    return *this;
}

JsonWriter& JsonWriter::textKey(std::string_view name) {
    text(name);
    out_ += ':';
    needsComma_ = false;
    return *this;
}

JsonWriter& JsonWriter::text(std::string_view value) {
    separate();
    appendText(out_, value);
    return *this;
}

JsonWriter& JsonWriter::number(double value) {
    // Without an exponent a number can be read as an integer too, within the range that every reader's integers have.
    constexpr double minDecimal = 1e-7;
    constexpr double maxDecimal = 1e16;
    if (!std::isfinite(value) || value == 0) {
        return raw("0"); // not "-0"
    }
    const double magnitude = std::fabs(value);
    const bool isDecimal = magnitude >= minDecimal && magnitude < maxDecimal;
    std::array<char, 32> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value,
                                   isDecimal ? std::chars_format::fixed : std::chars_format::scientific)
                         .ptr;
    return raw({digits.data(), static_cast<std::size_t>(end - digits.data())});
}

JsonWriter& JsonWriter::base64(const EncodedData& value) {
    separate();
    out_ += '"';
    value.appendBase64(out_);
    out_ += '"';
    return *this;
}

JsonWriter& JsonWriter::raw(std::string_view value) {
    separate();
    out_ += value;
    return *this;
}

} // namespace platform
