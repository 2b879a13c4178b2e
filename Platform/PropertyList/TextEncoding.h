// The encoding of a property list that is a text.
#pragma once

#include "Platform/Foundation/Data.h"

#include <optional>

namespace platform {

/// `file` as UTF-8 without a byte-order mark. The encoding is told by a byte-order mark (UTF-8, UTF-16, UTF-32), by the
/// shape of an XML declaration in UTF-16, by the encoding that an XML declaration names, or else it is UTF-8.
///
/// What is UTF-8 already is shared, not copied, and not checked. Nothing if the encoding is not known here, or if the
/// bytes are not valid in it.
std::optional<Data> convertedToUtf8(const Data& file);

} // namespace platform
