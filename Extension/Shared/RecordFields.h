// The values of a record's keys.
//
// A value of another kind counts as missing: an integer is not a boolean, a text is not a number.
#pragma once

#include "Platform/PropertyList/PropertyList.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace foliovault {

/// Finds the values of `keys`, an array of texts, in one pass over the record. Borrows from the property list.
template <const auto& keys>
class RecordFields {
  public:
    /// One of the keys by its name; another name does not compile.
    struct Key {
        std::size_t index;
        consteval Key(const char* name)
            : index(static_cast<std::size_t>(std::find(keys.begin(), keys.end(), std::string_view(name)) -
                                             keys.begin())) {
            if (index == keys.size()) {
                throw "no such key";
            }
        }
    };

    explicit RecordFields(const platform::PropertyListValue& record) { record.select(keys, values_); }

    /// Returns the value of any kind.
    const std::optional<platform::PropertyListValue>& operator[](Key key) const { return values_[key.index]; }

    std::optional<std::string> string(Key key) const { return get<&Value::string>(key); }
    std::optional<std::int64_t> integer(Key key) const { return get<&Value::integer>(key); }
    std::optional<bool> boolean(Key key) const { return get<&Value::boolean>(key); }
    std::optional<platform::Date> date(Key key) const { return get<&Value::date>(key); }
    std::optional<platform::EncodedData> data(Key key) const { return get<&Value::data>(key); }

  private:
    using Value = platform::PropertyListValue;

    template <auto getter>
    auto get(Key key) const {
        const auto& found = (*this)[key];
        return found ? ((*found).*getter)() : std::nullopt;
    }

    std::array<std::optional<Value>, keys.size()> values_;
};

} // namespace foliovault
