#include "Platform/Foundation/WritingDirection.h"

#include <algorithm>
#include <array>

namespace platform {
namespace {

using std::string_view;

// As Unicode's CLDR has them.
constexpr std::array<string_view, 13> scripts{"adlm", "arab", "aran", "hebr", "mand", "mend", "nkoo",
                                              "rohg", "samr", "syrc", "syrj", "thaa", "yezi"};
constexpr std::array<string_view, 43> languages{
    "ae",  "aeb", "ar",  "arc", "arq", "ars", "ary", "arz", "bal", "bej", "bgn", "bqi", "brh", "ckb", "dv",
    "fa",  "gbz", "glk", "grc", "he",  "iw",  "ji",  "khw", "ks",  "lad", "lah", "lrc", "mde", "mzn", "nqo",
    "ota", "pal", "phn", "ps",  "sd",  "sdh", "shu", "sog", "swb", "syr", "ug",  "ur",  "yi"};

/// Where a language is written the other way than elsewhere.
constexpr std::array<string_view, 18> exceptions{"az-iq", "az-ir", "ha-cm", "ha-sd", "kk-af",  "kk-cn",
                                                 "kk-ir", "kk-mn", "ku-lb", "ky-cn", "man-gn", "ms-cc",
                                                 "pa-pk", "sd-in", "tg-pk", "ug-kz", "ug-mn",  "uz-af"};

template <std::size_t Count>
bool contains(const std::array<string_view, Count>& names, string_view name) {
    return !name.empty() && std::find(names.begin(), names.end(), name) != names.end();
}

/// ASCII alone: tags are made of nothing else.
std::string lowerCase(string_view tag) {
    std::string lower(tag);
    std::transform(lower.begin(), lower.end(), lower.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return lower;
}

} // namespace

bool isRightToLeft(string_view language) {
    const std::string tag = lowerCase(language);
    const string_view name = string_view(tag).substr(0, tag.find('-'));
    string_view rest = string_view(tag).substr(std::min(tag.size(), name.size() + 1));
    const string_view second = rest.substr(0, rest.find('-'));
    constexpr std::size_t scriptLength = 4;
    if (second.size() == scriptLength) {
        return contains(scripts, second);
    }
    const bool isException = contains(exceptions, string_view(tag).substr(0, name.size() + 1 + second.size()));
    return contains(languages, name) != isException;
}

bool isRightToLeft(const std::vector<std::string>& preferred) {
    return !preferred.empty() && isRightToLeft(string_view(preferred.front()));
}

} // namespace platform
