// The values of a record's keys, each strictly of the kind that it should have.
//
// A value of another kind counts as missing: an integer is no boolean, a text no number.
#pragma once

#include "Platform/PropertyList/PropertyList.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace foliovault {

/// Finds the values in one pass over the record. Refers to the keys and to the property list.
template <std::size_t count>
class RecordFields {
  public:
    using Keys = std::array<std::string_view, count>;

    RecordFields(const platform::PropertyListValue& record, const Keys& keys) : keys_(keys) {
        record.select(keys, values_);
    }

    /// Returns the value of any kind. Requires one of the keys.
    const std::optional<platform::PropertyListValue>& operator[](std::string_view key) const {
        const auto* const found = std::find(keys_.begin(), keys_.end(), key);
        assert(found != keys_.end());
        return values_[static_cast<std::size_t>(found - keys_.begin())];
    }

    std::optional<std::string> string(std::string_view key) const { return get<&Value::string>(key); }
    std::optional<std::int64_t> integer(std::string_view key) const { return get<&Value::integer>(key); }
    std::optional<bool> boolean(std::string_view key) const { return get<&Value::boolean>(key); }
    std::optional<platform::Date> date(std::string_view key) const { return get<&Value::date>(key); }
    std::optional<platform::EncodedData> data(std::string_view key) const { return get<&Value::data>(key); }

  private:
    using Value = platform::PropertyListValue;

    template <auto getter>
    auto get(std::string_view key) const {
        const auto& found = (*this)[key];
        return found ? ((*found).*getter)() : std::nullopt;
    }

    const Keys& keys_;
    std::array<std::optional<Value>, count> values_;
};

} // namespace foliovault
