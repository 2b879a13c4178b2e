// The tips of the last download, in a file.
//
// The file is a JSON object, {"timestamp": …, "tips": […]}: the date of writing, and the tips in their order, each an
// object with the texts "title", "description", "link" and "guid" and the number "pubDate". Both dates are seconds
// since 2001-01-01 00:00:00 UTC. A file with a missing member, or one of another kind, is invalid. Other members do not
// matter.
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

/// Returns the content of a file.
std::string encoded(const CachedTips& cache);

/// Reads the content of a file. Returns nothing for other texts. Any thread.
std::optional<CachedTips> decodedCache(std::string_view json);

} // namespace foliovault
