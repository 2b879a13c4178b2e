// How each locale writes a day with its month's abbreviated name: "Mar 16, 2025", "16. März 2025", "2025年3月16日".
//
// Source: the Unicode CLDR, as ICU has it (the pattern of the skeleton "yMMMd" and what it needs), written down as a
// table, because loading ICU for one date takes longer than everything else that a start does.
#pragma once

#include <string_view>

namespace platform {

struct DatePattern {
    /// The calendar that counts the days, by its name in ICU: "gregorian", "buddhist".
    std::string_view calendar;
    /// The digit for zero; the other nine follow it in Unicode.
    std::string_view zero;
    /// Literal text with fields: {d} and {dd} for the day, {M} and {MM} for the month as a number, {name} for its name,
    /// {y} for the year. A doubled letter has at least two digits.
    std::string_view text;
    /// The months' names, separated by "|"; empty where the pattern has none.
    std::string_view monthNames;
};

/// The pattern of `locale` ("de_AT"), of what is left of it when parts are dropped from its end ("de"), or else of
/// English. Any thread.
DatePattern datePatternOf(std::string_view locale);

} // namespace platform
