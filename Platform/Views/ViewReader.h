// A view tree from the protocol's JSON, read with distrust: it comes from another process.
//
// What a host does not know costs nothing but itself: an unknown type becomes its children, if it has any, and an
// unknown attribute or value is passed over. A length that is not within ±`maxViewLength` counts as left out. A tree
// that is not an object, is deeper than `maxViewDepth` or has more than `maxViewCount` nodes is refused with a reason.
#pragma once

#include "Platform/Foundation/Expected.h"
#include "Platform/Views/View.h"

#include <simdjson.h>

#include <string>

namespace platform {

inline constexpr int maxViewDepth = 64;
inline constexpr int maxViewCount = 10'000;
inline constexpr double maxViewLength = 100'000;

/// The view, or in a few words why it is refused.
Expected<View, std::string> readView(simdjson::dom::element node);

} // namespace platform
