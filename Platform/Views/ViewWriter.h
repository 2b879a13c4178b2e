// A view tree as the protocol's JSON.
#pragma once

#include "Platform/Foundation/JsonWriter.h"
#include "Platform/Views/View.h"

namespace platform {

/// Writes `view` with all its children. Leaves out default values.
void writeView(JsonWriter& out, const View& view);

} // namespace platform
