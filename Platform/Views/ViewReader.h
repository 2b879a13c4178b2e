// A view tree from the protocol's JSON, read with distrust: it comes from another process.
//
// What a host does not know costs nothing but itself: an unknown type becomes its children, if it has any, and an
// unknown attribute or value is passed over. A length that is not within ±`greatestLength` counts as left out. A tree
// that is no object, is deeper than `greatestDepth` or has more than `greatestCount` nodes is refused with a reason.
#pragma once

#include "Platform/Foundation/Expected.h"
#include "Platform/Views/View.h"

#include <simdjson.h>

#include <string>

namespace platform {

inline constexpr int greatestViewDepth = 64;
inline constexpr int greatestViewCount = 10'000;
inline constexpr double greatestViewLength = 100'000;

/// The view, or in a few words why there is none.
Expected<View, std::string> readView(simdjson::dom::element node);

} // namespace platform
