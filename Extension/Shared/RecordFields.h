// What a store asks of one record: the values of its keys, each strictly of the kind that it should have.
//
// A value of another kind counts as missing: an integer is no boolean, a text no number.
#pragma once

#include "Platform/PropertyList/PropertyList.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace foliovault {

/// The values of `count` keys, found in one pass over the record; each is named by its key's place among the keys.
/// Valid as long as the property list.
template <std::size_t count>
class RecordFields {
  public:
    RecordFields(const platform::PropertyListValue& record, std::span<const std::string_view, count> keys) {
        record.select(keys, values_);
    }

    /// The value of whatever kind.
    const std::optional<platform::PropertyListValue>& value(std::size_t key) const { return values_[key]; }

    bool hasString(std::size_t key) const {
        return value(key) && value(key)->kind() == platform::PropertyListKind::string;
    }
    std::optional<std::string> string(std::size_t key) const {
        return value(key) ? value(key)->string() : std::nullopt;
    }
    std::optional<std::int64_t> integer(std::size_t key) const {
        return value(key) ? value(key)->integer() : std::nullopt;
    }
    std::optional<bool> boolean(std::size_t key) const { return value(key) ? value(key)->boolean() : std::nullopt; }
    std::optional<platform::Date> date(std::size_t key) const { return value(key) ? value(key)->date() : std::nullopt; }
    std::optional<platform::EncodedData> data(std::size_t key) const {
        return value(key) ? value(key)->data() : std::nullopt;
    }

  private:
    std::array<std::optional<platform::PropertyListValue>, count> values_;
};

} // namespace foliovault
