// The encoding of a file that is a text: a property list or any XML document.
//
// It is given by a byte-order mark (UTF-8, UTF-16, UTF-32), by the shape of an XML declaration in UTF-16, by the
// encoding that an XML declaration names, or else it is UTF-8. The encodings known are the C library's. Any thread.
#pragma once

#include "Platform/Foundation/Data.h"

namespace platform {

/// A file as UTF-8 without a byte-order mark.
struct DecodedText {
    /// What is UTF-8 already is shared, not copied, and not checked.
    Data text;
    /// Whether that is all of the file: else the next bytes are not valid in its encoding, or that is not known here.
    bool isWhole = true;
};
DecodedText decodedText(const Data& file);

} // namespace platform
