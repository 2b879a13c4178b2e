// Case-insensitive search by the rules of one language or another.
#pragma once

#include <string_view>

namespace platform {

/// How letters fold: in `turkic`, I goes with ı and İ with i; in `standard`, I goes with i.
enum class CaseFolding { standard, turkic };

/// Whether `text` contains `needle` ignoring case. Diacritics count, canonically equivalent texts match, an empty
/// needle matches nothing, and a match is never followed by a combining mark. Case folding is the full one of Unicode,
/// so that "ß" matches "SS". Without ICU, only the cases of ASCII letters are ignored. Any thread.
bool caseInsensitiveContains(std::string_view text, std::string_view needle, CaseFolding folding);

} // namespace platform
