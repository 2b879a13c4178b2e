// A view as the protocol's JSON.
#pragma once

#include "Platform/Foundation/JsonWriter.h"
#include "Platform/Views/ViewWriter.h"

#include <string>

namespace platform {

inline std::string json(const View& view) {
    std::string text;
    JsonWriter out(text);
    writeView(out, view);
    return text;
}

} // namespace platform
