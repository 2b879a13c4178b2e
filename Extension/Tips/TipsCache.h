// The tips of the last download, kept in a file.
//
// The file is one JSON object, {"timestamp": …, "tips": […]}: when it was written, and the tips in the feed's order,
// each an object with the texts "title", "description", "link" and "guid" and the number "pubDate". Both dates are
// seconds since 2001-01-01 00:00:00 UTC. Reading is strict: a file without one of the members, or with one of another
// kind, is refused. Other members do not matter.
#pragma once

#include "Extension/Tips/TipItem.h"
#include "Platform/Foundation/Date.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace foliovault {

struct CachedTips {
    platform::Date timestamp;
    std::vector<TipItem> tips;
};

/// The content of a file for these tips.
std::string encoded(const CachedTips& cache);

/// What `encoded` made; nothing of any other text. Any bytes, any thread.
std::optional<CachedTips> decodedCache(std::string_view json);

} // namespace foliovault
