// Writes JSON straight into a text, without a tree in between.
//
// Requires calls in the order of the text; adds commas and colons. Text is UTF-8; invalid bytes become U+FFFD, so that
// the output is always valid. Numbers are written as shortest round-trip decimals, with an exponent only below 1e-7 and
// from 1e16 on; infinity and NaN become 0.
#pragma once

#include <concepts>
#include <cstdint>
#include <string>
#include <string_view>

namespace platform {

class EncodedData;

class JsonWriter {
  public:
    /// Appends to `out`, which must outlive the writer.
    explicit JsonWriter(std::string& out) : out_(out) {}

    JsonWriter& beginObject() { return begin('{'); }
    JsonWriter& endObject() { return end('}'); }
    JsonWriter& beginArray() { return begin('['); }
    JsonWriter& endArray() { return end(']'); }
    /// Requires ASCII without quotes, backslashes and control characters.
    JsonWriter& key(std::string_view name);
    /// Writes any text as a key.
    JsonWriter& textKey(std::string_view name);
    JsonWriter& null() { return raw("null"); }
    JsonWriter& text(std::string_view value);
    JsonWriter& number(double value);
    JsonWriter& base64(const EncodedData& value);
    /// Requires JSON.
    JsonWriter& raw(std::string_view value);

    template <std::integral Integer>
    requires(!std::same_as<Integer, bool>) JsonWriter& number(Integer value) {
        separate();
        out_ += std::to_string(value);
        return *this;
    }

    /// Writes a key and a text.
    JsonWriter& member(std::string_view name, std::string_view value) { return key(name).text(value); }

  private:
    JsonWriter& begin(char bracket);
    JsonWriter& end(char bracket);
    void separate();

    std::string& out_;
    bool needsComma_ = false;
};

} // namespace platform
