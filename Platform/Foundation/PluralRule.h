// The rule of a message catalog for the plural form of a number.
#pragma once

#include <optional>
#include <string_view>

namespace platform {

/// Returns the value of `rule` for the number `n`. A rule is an expression of numbers, "n" and C's operators without
/// assignment: "n != 1", "n%10==1 && n%100!=11 ? 0 : 1". Returns nothing for other texts. Division by zero gives zero.
/// Any thread.
///
/// Source: the GNU gettext manual, "Additional functions for plural forms".
std::optional<unsigned long> evaluatePluralRule(std::string_view rule, unsigned long n);

} // namespace platform
