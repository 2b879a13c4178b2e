// A view as the text that a host gets.
#pragma once

#include "Platform/Foundation/JsonWriter.h"
#include "Platform/Views/ViewWriter.h"

#include <string>

namespace foliovault::testing {

inline std::string json(const platform::View& view) {
    std::string text;
    platform::JsonWriter out(text);
    platform::writeView(out, view);
    return text;
}

} // namespace foliovault::testing
