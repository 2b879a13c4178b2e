#include "Platform/Foundation/JsonWriter.h"

#include "Platform/Foundation/EncodedData.h"
#include "Platform/Foundation/Utf8.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstring>

namespace platform {

namespace {

/// Whether a byte can be copied into a JSON text without a further look.
constexpr std::array<bool, 256> plainBytes = [] {
    std::array<bool, 256> plain{};
    for (std::size_t byte = 0x20; byte < 0x80; ++byte) {
        plain[byte] = byte != '"' && byte != '\\';
    }
    return plain;
}();

void appendEscaped(std::string& out, char character) {
    constexpr std::string_view digits = "0123456789abcdef";
    switch (character) {
    case '"':
        out += "\\\"";
        return;
    case '\\':
        out += "\\\\";
        return;
    case '\n':
        out += "\\n";
        return;
    case '\r':
        out += "\\r";
        return;
    case '\t':
        out += "\\t";
        return;
    default: {
        const auto code = static_cast<unsigned char>(character);
        const std::array<char, 6> escape = {'\\', 'u', '0', '0', digits[code >> 4U], digits[code & 0xFU]};
        out.append(escape.data(), escape.size());
    }
    }
}

/// Whether all of a text can be copied without a further look, eight bytes at a time.
bool isPlain(std::string_view text) {
    constexpr std::uint64_t ones = 0x0101010101010101U;
    constexpr std::uint64_t highs = 0x8080808080808080U;
    std::uint64_t special = 0;
    std::size_t at = 0;
    for (; at + sizeof special <= text.size(); at += sizeof special) {
        std::uint64_t word = 0;
        std::memcpy(&word, text.data() + at, sizeof word);
        const std::uint64_t quotes = word ^ (ones * '"');
        const std::uint64_t backslashes = word ^ (ones * '\\');
        // The high bit of a byte is set by a control character, a quote, a backslash and what is no ASCII; a borrow
        // from a byte that has it may set its neighbour's too, which is no harm.
        special |= (word - ones * 0x20U) | (quotes - ones) | (backslashes - ones) | word;
    }
    bool plain = (special & highs) == 0;
    for (; at < text.size(); ++at) {
        plain = plain && plainBytes[static_cast<unsigned char>(text[at])];
    }
    return plain;
}

void appendText(std::string& out, std::string_view text) {
    out += '"';
    std::size_t runBegin = 0;
    std::size_t at = 0;
    const auto appendRun = [&] { out.append(text.data() + runBegin, at - runBegin); };
    while (at < text.size()) {
        const auto byte = static_cast<unsigned char>(text[at]);
        if (plainBytes[byte]) {
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

/// Appends a plain text in its quotes, with a comma before it and a colon after it where they are wanted.
void appendPlain(std::string& out, bool comma, std::string_view text, bool colon) {
    const std::size_t start = out.size();
    out.resize(start + text.size() + (comma ? 1 : 0) + (colon ? 1 : 0) + 2, '"');
    char* end = out.data() + start;
    if (comma) {
        *end++ = ',';
    }
    std::memcpy(end + 1, text.data(), text.size());
    if (colon) {
        out.back() = ':';
    }
}

} // namespace

void JsonWriter::separate() {
    if (needsComma_) {
        out_ += ',';
    }
    needsComma_ = true;
}

JsonWriter& JsonWriter::beginObject() {
    separate();
    out_ += '{';
    needsComma_ = false;
    return *this;
}

JsonWriter& JsonWriter::endObject() {
    out_ += '}';
    needsComma_ = true;
    return *this;
}

JsonWriter& JsonWriter::beginArray() {
    separate();
    out_ += '[';
    needsComma_ = false;
    return *this;
}

JsonWriter& JsonWriter::endArray() {
    out_ += ']';
    needsComma_ = true;
    return *this;
}

JsonWriter& JsonWriter::key(std::string_view name) {
    appendPlain(out_, needsComma_, name, true);
    needsComma_ = false;
    return *this;
}

JsonWriter& JsonWriter::textKey(std::string_view name) {
    text(name);
    out_ += ':';
    needsComma_ = false;
    return *this;
}

JsonWriter& JsonWriter::null() {
    return raw("null");
}

JsonWriter& JsonWriter::text(std::string_view value) {
    if (isPlain(value)) {
        appendPlain(out_, needsComma_, value, false);
        needsComma_ = true;
        return *this;
    }
    separate();
    appendText(out_, value);
    return *this;
}

JsonWriter& JsonWriter::number(double value) {
    // Without an exponent a number can be read as an integer too, and so far only as every reader's integers reach.
    constexpr double smallestDecimal = 1e-7;
    constexpr double largestDecimal = 1e16;
    constexpr double largestQuickInteger = 1e9;
    if (!std::isfinite(value)) {
        return raw("0");
    }
    const double magnitude = std::fabs(value);
    if (magnitude < largestQuickInteger && value == std::trunc(value)) {
        return number(static_cast<std::int64_t>(value));
    }
    const bool isDecimal = magnitude >= smallestDecimal && magnitude < largestDecimal;
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
