// Bytes as their source stores them: raw, or as base64 text, as in XML property lists and JSON.
//
// Base64 has the standard alphabet of RFC 4648. As in property lists, decoding skips any other character between the
// digits, ends at the padding and never fails.
#pragma once

#include "Platform/Foundation/Data.h"

#include <string>

namespace platform {

class EncodedData {
  public:
    enum class Encoding { raw, base64 };

    EncodedData(Data stored, Encoding encoding) : stored_(std::move(stored)), encoding_(encoding) {}

    /// Returns the bytes: shared if they are stored raw, else decoded now.
    Data decoded() const;

    /// Returns the size of the stored form in bytes.
    std::size_t storedSize() const { return stored_.size(); }

    /// Appends the bytes as canonical base64 with padding and no white space.
    void appendBase64(std::string& out) const;

    friend bool operator==(const EncodedData& a, const EncodedData& b);

  private:
    Data stored_;
    Encoding encoding_;
};

} // namespace platform
