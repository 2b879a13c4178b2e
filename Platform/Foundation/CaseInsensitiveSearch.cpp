#include "Platform/Foundation/CaseInsensitiveSearch.h"

#include "Platform/Foundation/AsciiSet.h"
#include "Platform/Foundation/Icu.h"
#include "Platform/Foundation/Utf8.h"

#include <algorithm>
#include <optional>
#include <string>

namespace platform {

namespace {

/// Searches ASCII in ASCII. In Turkic languages the small form of "I" is not ASCII.
bool asciiContains(std::string_view text, std::string_view needle, CaseFolding folding) {
    const auto folded = [folding](char character) {
        const bool keepsItself = character == 'I' && folding == CaseFolding::turkic;
        return keepsItself ? character : asciiLowerCased(character);
    };
    const auto hit = std::search(text.begin(), text.end(), needle.begin(), needle.end(),
                                 [folded](char a, char b) { return folded(a) == folded(b); });
    return hit != text.end();
}

/// Calls an ICU function that fills a buffer of `capacity` UTF-16 units, once more if `guess` was too small.
template <typename Fill>
std::optional<std::u16string> filled(std::size_t guess, Fill fill) {
    std::u16string buffer(guess, u'\0');
    for (int attempt = 0; attempt < 2; ++attempt) {
        UErrorCode error = U_ZERO_ERROR;
        const auto length = fill(buffer.data(), static_cast<std::int32_t>(buffer.size()), error);
        buffer.resize(static_cast<std::size_t>(std::max<std::int32_t>(length, 0)));
        if (error != U_BUFFER_OVERFLOW_ERROR) {
            return U_SUCCESS(error) ? std::optional(std::move(buffer)) : std::nullopt;
        }
    }
    return std::nullopt;
}

std::optional<std::u16string> normalized(const Icu& icu, const UNormalizer2* form, const std::u16string& text) {
    return filled(text.size() + text.size() / 4, [&](UChar* out, std::int32_t capacity, UErrorCode& error) {
        return icu.normalize(form, text.data(), static_cast<std::int32_t>(text.size()), out, capacity, &error);
    });
}

std::optional<std::u16string> toUtf16(const Icu& icu, std::string_view text) {
    constexpr UChar32 replacementCharacter = 0xFFFD;
    return filled(text.size(), [&](UChar* out, std::int32_t capacity, UErrorCode& error) {
        std::int32_t length = 0;
        icu.strFromUtf8WithSub(out, capacity, &length, text.data(), static_cast<std::int32_t>(text.size()),
                               replacementCharacter, nullptr, &error);
        return length;
    });
}

/// Returns the form for comparisons: NFC, case folding, NFD.
std::optional<std::u16string> comparable(const Icu& icu, std::string_view text, CaseFolding folding) {
    UErrorCode error = U_ZERO_ERROR;
    const UNormalizer2* composed = icu.getNfcInstance(&error);
    const UNormalizer2* decomposed = icu.getNfdInstance(&error);
    const std::uint32_t options = folding == CaseFolding::turkic ? U_FOLD_CASE_EXCLUDE_SPECIAL_I : U_FOLD_CASE_DEFAULT;
    std::optional<std::u16string> result = U_SUCCESS(error) ? toUtf16(icu, text) : std::nullopt;
    if (result) {
        result = normalized(icu, composed, *result);
    }
    if (result) {
        result = filled(result->size() + result->size() / 4, [&](UChar* out, std::int32_t capacity, UErrorCode& e) {
            return icu.strFoldCase(out, capacity, result->data(), static_cast<std::int32_t>(result->size()), options,
                                   &e);
        });
    }
    return result ? normalized(icu, decomposed, *result) : std::nullopt;
}

bool isCombiningMarkAt(const Icu& icu, const std::u16string& text, std::size_t at) {
    if (at >= text.size()) {
        return false;
    }
    UChar32 character = 0;
    U16_GET(text, 0, at, text.size(), character);
    return (U_MASK(icu.charType(character)) & U_GC_M_MASK) != 0;
}

} // namespace

bool caseInsensitiveContains(std::string_view text, std::string_view needle, CaseFolding folding) {
    // ICU counts in 32 bits, and its results can be several times as long.
    constexpr std::size_t maxText = std::size_t{1} << 26U;
    if (needle.empty()) {
        return false;
    }
    const bool isAsciiSearch = isAscii(text) && isAscii(needle);
    const Icu* icu = isAsciiSearch || text.size() > maxText || needle.size() > maxText ? nullptr : Icu::shared();
    if (icu == nullptr) {
        return asciiContains(text, needle, folding);
    }
    const auto haystack = comparable(*icu, text, folding);
    const auto wanted = comparable(*icu, needle, folding);
    if (!haystack || !wanted) {
        return asciiContains(text, needle, folding);
    }
    for (std::size_t hit = haystack->find(*wanted); hit != std::u16string::npos;
         hit = haystack->find(*wanted, hit + 1)) {
        if (!isCombiningMarkAt(*icu, *haystack, hit + wanted->size())) {
            return true;
        }
    }
    return false;
}

} // namespace platform
