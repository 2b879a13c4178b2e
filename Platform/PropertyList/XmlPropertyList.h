// The XML form of property lists.
//
// `<plist>` is optional, with one object inside. A DOCTYPE defines nothing, and attributes mean nothing. Comments and
// processing instructions are allowed everywhere, text only in string, key, integer, real, date and data.
#pragma once

#include "Platform/PropertyList/PropertyListTree.h"

#include <optional>

namespace platform {

/// Reads the XML property list in `text`. Returns nothing for other texts. Requires no byte-order mark.
std::optional<PropertyListTree> readXmlPropertyList(const Data& text);

} // namespace platform
