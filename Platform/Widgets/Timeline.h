// What a provider returns: entries, each with the moment it applies from, and when to ask again: at a date, or when one
// of the files changes that the entries were made from.
#pragma once

#include "Platform/Foundation/Date.h"

#include <string>
#include <vector>

namespace platform {

/// Asks for a new timeline at the earliest at `date`.
struct ReloadAfter {
    Date date;
};

template <class Entry>
struct Timeline {
    std::vector<Entry> entries;
    ReloadAfter reload;
    /// Paths below the user's home, whether the files exist or not; a host takes the first 64.
    std::vector<std::string> watches = {};
};

} // namespace platform
