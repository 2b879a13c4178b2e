// Which languages are written from right to left, without ICU: what a desktop must know before it draws anything.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// Whether the language of a tag like "ar", "he-IL" or "pa-Arab-PK" is: by its script, where the tag names one, else by
/// the script that the language has in that country.
bool isRightToLeft(std::string_view language);

/// Whether the first of the user's languages (`preferredLanguages`) is; users without any read from left to right.
bool isRightToLeft(const std::vector<std::string>& preferred);

} // namespace platform
