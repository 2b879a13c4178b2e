// The result of a provider: entries with the date from which each applies, and when to reload: at a date, or when a
// file changes.
#pragma once

#include "Platform/Foundation/Date.h"

#include <string>
#include <vector>

namespace platform {

/// The host reloads at `date` or later.
struct ReloadAfter {
    Date date;
};

template <class Entry>
struct Timeline {
    std::vector<Entry> entries;
    ReloadAfter reload;
    /// Files, existing or not, whose changes cause a reload: paths below the user's home. A host follows the first 64.
    std::vector<std::string> watches = {};
};

} // namespace platform
