// Compares stripHTML with a plain version of its steps.

#include "Extension/Tips/RSSParser.h"
#include "Platform/Foundation/WhiteSpace.h"

#include <cctype>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace {

using foliovault::RSSParser;

std::string withoutTags(const std::string& text) {
    std::string result;
    for (std::size_t at = 0; at < text.size();) {
        std::size_t end = at + 1;
        while (text[at] == '<' && end < text.size() && text[end] != '>') {
            ++end;
        }
        if (text[at] == '<' && end < text.size() && end > at + 1) {
            at = end + 1;
        } else {
            result += text[at++];
        }
    }
    return result;
}

std::string replaced(const std::string& text, const std::string& what, const std::string& by) {
    std::string result;
    for (std::size_t at = 0; at < text.size();) {
        if (text.compare(at, what.size(), what) == 0) {
            result += by;
            at += what.size();
        } else {
            result += text[at++];
        }
    }
    return result;
}

std::string decoded(const std::string& text, const std::string& opening, int (*isDigit)(int), int radix) {
    std::string result;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t digits = at + opening.size();
        std::size_t end = digits;
        const bool isOpen = text.compare(at, opening.size(), opening) == 0;
        while (isOpen && end < text.size() && isDigit(static_cast<unsigned char>(text[end])) != 0) {
            ++end;
        }
        const bool isReference = isOpen && end > digits && end < text.size() && text[end] == ';';
        const auto character =
            isReference ? RSSParser::decodeScalar(text.substr(digits, end - digits), radix) : std::nullopt;
        if (character) {
            result += *character;
            at = end + 1;
        } else {
            result += text[at++];
        }
    }
    return result;
}

std::string collapsed(const std::string& text) {
    std::string result;
    std::string word;
    const auto endWord = [&] {
        result += (result.empty() || word.empty() ? "" : " ") + word;
        word.clear();
    };
    for (std::size_t at = 0; at < text.size();) {
        if (const std::size_t size = platform::leadingWhiteSpace(std::string_view(text).substr(at))) {
            endWord();
            at += size;
        } else {
            word += text[at++];
        }
    }
    endWord();
    return result;
}

std::string plainText(std::string text) {
    text = withoutTags(text);
    const std::pair<const char*, const char*> entities[]{{"&lt;", "<"},   {"&gt;", ">"},   {"&quot;", "\""},
                                                         {"&apos;", "'"}, {"&nbsp;", " "}, {"&amp;", "&"}};
    for (const auto& [what, by] : entities) {
        text = replaced(text, what, by);
    }
    text = decoded(text, "&#", std::isdigit, 10);
    text = decoded(text, "&#x", std::isxdigit, 16);
    return collapsed(text);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    const std::string html(reinterpret_cast<const char*>(bytes), size);
    const std::string expected = plainText(html);
    const std::string actual = RSSParser::stripHTML(html);
    if (actual != expected) {
        std::fprintf(stderr, "\"%s\" is not \"%s\"\n", actual.c_str(), expected.c_str());
        std::abort();
    }
    return 0;
}
