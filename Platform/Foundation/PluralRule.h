// Which wording of a text goes with a number, as message catalogs say it.
#pragma once

#include <optional>
#include <string_view>

namespace platform {

/// Returns the value of `rule` for the number `n`: an expression of C's operators without assignment, numbers and "n", as in
/// "n != 1" or "n%10==1 && n%100!=11 ? 0 : 1". Returns nothing for other texts. Division by zero gives zero. Any
/// thread.
///
/// Source: the GNU gettext manual, "Additional functions for plural forms".
std::optional<unsigned long> evaluatePluralRule(std::string_view rule, unsigned long n);

} // namespace platform
