// The table that DatePattern.h reads.
#pragma once

namespace platform {

/// A line a locale that differs from its parent, the table's first line empty: the locale's name and the members of its
/// `DatePattern`, in their order, separated by tabs.
extern const char* const datePatternTable;

} // namespace platform
