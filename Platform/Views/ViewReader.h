// A view tree from the protocol's JSON, read with distrust: it comes from another process.
//
// Unknown types become their children, unknown attributes and values are passed over, a text longer than
// `longestText` bytes is cut, a number that is not finite or beyond 1e6 counts as absent. A tree deeper than
// `greatestDepth` or with more than `greatestCount` nodes is refused.
#pragma once

#include "Platform/Views/View.h"

#include <cstddef>
#include <simdjson.h>
#include <string>
#include <variant>

namespace platform {

struct ViewError {
    std::string message;
};

struct ViewReader {
    static constexpr int greatestDepth = 64;
    static constexpr int greatestCount = 10'000;

    static std::variant<View, ViewError> read(simdjson::dom::element node);
};

} // namespace platform
