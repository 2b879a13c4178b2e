// A view tree as the protocol's JSON.
#pragma once

#include "Platform/Foundation/JsonWriter.h"
#include "Platform/Views/View.h"

namespace platform {

/// Writes `view` with everything below it. What has the protocol's default value is left out.
void writeView(JsonWriter& out, const View& view);

} // namespace platform
