// Property lists, read where they lie.
//
// A `PropertyList` is a parsed file in the binary, the XML or the old text form (tried in that order). Parsing checks the
// whole file once and copies nothing: values are handles into the file's bytes, and texts, numbers and data are made only
// when they are asked for. Reading 16 records of a 100 MB file costs memory for 16 records.
//
// The forms:
//  - binary: "bplist0" and one more character, objects, an offset table, a 32-byte trailer. Integers of 1, 2 and 4 bytes are
//    unsigned, of 8 signed (16 bytes: the low 8 count when they hold the number); texts ASCII or UTF-16 big-endian; dates
//    doubles of seconds since 2001. Null, set and UID objects exist and have kinds of their own. Cycles are an error.
//  - XML: `<plist>` is optional, one object inside. The five named entities, numeric ones, CDATA in strings. Unknown tags,
//    and `<data/>` or empty dates, reals and integers, are errors. Integers decimal or 0x, −2^63 to 2^64−1; dates
//    YYYY-MM-DDThh:mm:ssZ and nothing else. A byte-order mark and the declaration's encoding count; invalid UTF-8 is an error.
//  - old text: `{k=v;}`, `(a,b)`, `<hex>`, quoted and bare strings, comments. Every scalar is a string or data.
//
// Containers deeper than `greatestDepth` are an error in every form. A file cut off anywhere, and lengths and offsets that
// lie, are errors, never reads outside the bytes.
//
// Values stay valid as long as their `PropertyList` lives (it may be moved). Reading from several threads is safe.
#pragma once

#include "Platform/Foundation/Data.h"
#include "Platform/Foundation/Date.h"
#include "Platform/Foundation/EncodedData.h"
#include "Platform/PropertyList/PropertyListSource.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace platform {

class PropertyListValue {
  public:
    using Kind = PropertyListKind;

    Kind kind() const { return source_->kind(position_); }

    /// The value as the kind it is, or nothing if it is of another kind: an integer is no boolean and no real.
    std::optional<std::string> string() const { return source_->string(position_); }
    /// Nothing also for an integer above 2^63−1.
    std::optional<std::int64_t> integer() const { return source_->integer(position_); }
    std::optional<bool> boolean() const { return source_->boolean(position_); }
    std::optional<Date> date() const { return source_->date(position_); }
    std::optional<EncodedData> data() const { return source_->data(position_); }
    /// An integer or a real, as a real.
    std::optional<double> number() const { return source_->number(position_); }

    /// The number of an array's elements; nothing if this is no array.
    std::optional<std::size_t> arrayCount() const { return source_->arrayCount(position_); }

    /// Calls `visit` with every element in order, until it answers false. False if this is no array.
    bool forEachElement(const std::function<bool(PropertyListValue)>& visit) const;

    /// Calls `visit` with every key and value in the file's order, until it answers false. False if this is no dictionary.
    bool forEachEntry(const std::function<bool(const std::string& key, PropertyListValue)>& visit) const;

    /// Fills `found[i]` with the value for `keys[i]`, nothing where there is none, in one pass over the dictionary; of a
    /// duplicate key the last counts. False if this is no dictionary. At most 64 keys.
    bool select(std::span<const std::string_view> keys, std::span<std::optional<PropertyListValue>> found) const;

    /// The value for one key.
    std::optional<PropertyListValue> operator[](std::string_view key) const;

    /// Whether this is an array and every element is a dictionary.
    bool isArrayOfDictionaries() const;

  private:
    friend class PropertyList;
    PropertyListValue(const PropertyListSource* source, std::uint64_t position) : source_(source), position_(position) {}

    const PropertyListSource* source_;
    std::uint64_t position_;
};

class PropertyList {
  public:
    static constexpr int greatestDepth = 512;

    /// The file's content as a property list, or nothing if it is none in any form.
    static std::optional<PropertyList> parse(const Data& file);

    PropertyListValue root() const;

  private:
    explicit PropertyList(std::unique_ptr<const PropertyListSource> source) : source_(std::move(source)) {}
    std::unique_ptr<const PropertyListSource> source_;
};

} // namespace platform
