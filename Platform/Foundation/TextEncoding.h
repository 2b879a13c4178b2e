// The encoding of a text file: a property list or an XML document.
//
// A byte-order mark (UTF-8, UTF-16, UTF-32), an XML declaration in UTF-16, or the encoding in an XML declaration tells
// it; otherwise it is UTF-8. Knows the encodings of the C library. Any thread.
#pragma once

#include "Platform/Foundation/Data.h"

namespace platform {

/// A file as UTF-8 without a byte-order mark.
struct DecodedText {
    /// UTF-8 is shared, not copied, and not checked.
    Data text;
    /// False if the next bytes are invalid in the file's encoding, or the encoding is unknown.
    bool isWhole = true;
};
DecodedText decodedText(const Data& file);

} // namespace platform
