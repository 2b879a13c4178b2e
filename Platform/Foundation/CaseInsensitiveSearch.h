// Case-insensitive search by the rules of a language.
#pragma once

#include <string_view>

namespace platform {

/// How letters fold: in `turkic`, I goes with ı and İ with i; in `standard`, I goes with i.
enum class CaseFolding { standard, turkic };

/// Returns whether `text` contains `needle` ignoring case. Diacritics count, canonically equivalent texts match, an
/// empty needle matches nothing, and a combining mark never follows a match. Uses the full case folding of Unicode, so
/// that "ß" matches "SS". Without ICU, ignores the case of ASCII letters only. Any thread.
bool caseInsensitiveContains(std::string_view text, std::string_view needle, CaseFolding folding);

} // namespace platform
