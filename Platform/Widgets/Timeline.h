// What a provider answers: entries, each with the moment it applies from, and when to ask again.
#pragma once

#include "Platform/Foundation/Date.h"

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
};

} // namespace platform
