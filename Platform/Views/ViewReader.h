// Reads a view tree from the protocol's JSON. Trusts nothing, since it comes from another process.
//
// A node of unknown type becomes its children. Unknown attributes and values are skipped, and so are lengths outside of
// ±`maxViewLength`. A tree that is not an object, is deeper than `maxViewDepth` or has more than `maxViewCount` nodes
// is an error.
#pragma once

#include "Platform/Foundation/Expected.h"
#include "Platform/Views/View.h"

#include <simdjson.h>

#include <string>

namespace platform {

inline constexpr int maxViewDepth = 64;
inline constexpr int maxViewCount = 10'000;
inline constexpr double maxViewLength = 100'000;

/// Returns the view, or a short reason.
Expected<View, std::string> readView(simdjson::dom::element node);

} // namespace platform
