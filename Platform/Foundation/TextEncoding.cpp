#include "Platform/Foundation/TextEncoding.h"

#include "Platform/Foundation/AsciiSet.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

#include <iconv.h>

namespace platform {

namespace {

using namespace std::string_view_literals;

struct Signature {
    std::string_view bytes;
    /// The number of bytes before the text.
    std::size_t markSize;
    const char* encoding;
};

// UTF-32's mark begins with that of UTF-16, so it comes first.
constexpr std::array signatures = {
    Signature{"\xEF\xBB\xBF"sv, 3, "UTF-8"},       Signature{"\xFF\xFE\0\0"sv, 4, "UTF-32LE"},
    Signature{"\0\0\xFE\xFF"sv, 4, "UTF-32BE"},    Signature{"\xFF\xFE"sv, 2, "UTF-16LE"},
    Signature{"\xFE\xFF"sv, 2, "UTF-16BE"},        Signature{"<\0?\0x\0m\0l\0"sv, 0, "UTF-16LE"},
    Signature{"\0<\0?\0x\0m\0l"sv, 0, "UTF-16BE"},
};

/// Returns the encoding that an XML declaration at the beginning of `text` names; empty without a declaration.
std::string_view declaredEncoding(std::string_view text) {
    if (!text.starts_with("<?xml")) {
        return {};
    }
    constexpr std::string_view blanks = " \t\r\n";
    constexpr std::string_view name = "encoding";
    std::string_view declaration = text.substr(0, text.find("?>"));
    const std::size_t start = declaration.find(name);
    if (start == std::string_view::npos) {
        return {};
    }
    declaration.remove_prefix(start + name.size());
    declaration.remove_prefix(std::min(declaration.find_first_not_of(blanks), declaration.size()));
    if (!declaration.starts_with('=')) {
        return {};
    }
    declaration.remove_prefix(1);
    declaration.remove_prefix(std::min(declaration.find_first_not_of(blanks), declaration.size()));
    if (!declaration.starts_with('"') && !declaration.starts_with('\'')) {
        return {};
    }
    return declaration.substr(1, declaration.find(declaration.front(), 1) - 1);
}

/// Returns whether XML allows the name. With its own additions ("//IGNORE"), iconv would skip invalid bytes.
bool isEncodingName(std::string_view name) {
    return name.find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789._-") ==
           std::string_view::npos;
}

bool isUtf8Name(std::string_view name) {
    constexpr std::string_view utf8 = "utf-8";
    return std::equal(name.begin(), name.end(), utf8.begin(), utf8.end(),
                      [](char a, char b) { return asciiLowerCased(a) == b; });
}

class Converter {
  public:
    explicit Converter(const char* encoding) : descriptor_(iconv_open("UTF-8", encoding)) {}
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;
    ~Converter() {
        if (isOpen()) {
            iconv_close(descriptor_);
        }
    }

    /// Converts `bytes` up to the first invalid one.
    DecodedText convert(std::string_view bytes) {
        if (!isOpen()) {
            return {.isWhole = false};
        }
        std::string text;
        text.reserve(bytes.size() + bytes.size() / 8);
        std::array<char, 16384> piece;
        char* input = const_cast<char*>(bytes.data()); // iconv does not write to it
        std::size_t inputLeft = bytes.size();
        for (bool isFlushing = false;;) {
            char* output = piece.data();
            std::size_t outputLeft = piece.size();
            const std::size_t result = isFlushing ? iconv(descriptor_, nullptr, nullptr, &output, &outputLeft)
                                                  : iconv(descriptor_, &input, &inputLeft, &output, &outputLeft);
            text.append(piece.data(), output);
            const bool isFailed = result == static_cast<std::size_t>(-1);
            const bool isInvalid = isFailed && errno != E2BIG;
            if (isInvalid || (!isFailed && isFlushing)) {
                return {.text = Data::owning(std::move(text)), .isWhole = !isInvalid};
            }
            isFlushing = isFlushing || !isFailed;
        }
    }

  private:
    // iconv_open() returns this address when it fails.
    bool isOpen() const { return descriptor_ != reinterpret_cast<iconv_t>(-1); } // NOLINT(performance-no-int-to-ptr)

    iconv_t descriptor_;
};

} // namespace

DecodedText decodedText(const Data& file) {
    const std::string_view bytes = file.bytes();
    const auto* const signature =
        std::find_if(signatures.begin(), signatures.end(),
                     [bytes](const Signature& candidate) { return bytes.starts_with(candidate.bytes); });
    const bool isSigned = signature != signatures.end();
    const std::string_view text = isSigned ? bytes.substr(signature->markSize) : bytes;
    const std::string_view encoding = isSigned ? signature->encoding : declaredEncoding(bytes);
    if (encoding.empty() || isUtf8Name(encoding)) {
        return {.text = file.slice(text)};
    }
    if (!isEncodingName(encoding)) {
        return {.isWhole = false};
    }
    return Converter(std::string(encoding).c_str()).convert(text);
}

} // namespace platform
