// The XML form of property lists.
//
// `<plist>` is optional, one object inside. A DOCTYPE is passed over and defines nothing; attributes mean nothing.
// Comments and processing instructions may stand anywhere, text only in string, key, integer, real, date and data.
#pragma once

#include "Platform/PropertyList/PropertyListTree.h"

#include <optional>

namespace platform {

/// The XML property list in `text`, which is UTF-8 without a byte-order mark. Nothing for any other text.
std::optional<PropertyListTree> readXmlPropertyList(const Data& text);

} // namespace platform
