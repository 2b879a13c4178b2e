// Bytes as the place they came from stores them: raw, or as base64 text.
//
// An XML property list and a JSON message carry bytes as base64. Icons travel from the one to the other without being
// decoded on the way: the text is decoded when `decoded()` is called.
//
// Base64 is RFC 4648's standard alphabet. As in property lists, white space and any other foreign character between the
// digits is passed over, and decoding ends at the padding; decoding never fails.
#pragma once

#include "Platform/Foundation/Data.h"

#include <string>

namespace platform {

class EncodedData {
  public:
    enum class Encoding { raw, base64 };

    EncodedData(Data stored, Encoding encoding) : stored_(std::move(stored)), encoding_(encoding) {}

    /// The bytes themselves: shared where they are stored raw, else decoded now.
    Data decoded() const;

    /// How many bytes the stored form has.
    std::size_t storedSize() const { return stored_.size(); }

    /// Appends the bytes as canonical base64 with padding and no white space.
    void appendBase64(std::string& out) const;

    friend bool operator==(const EncodedData& a, const EncodedData& b);

  private:
    Data stored_;
    Encoding encoding_;
};

} // namespace platform
