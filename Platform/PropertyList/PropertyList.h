// Property lists, read where they lie.
//
// A `PropertyList` is a parsed file in the binary, the XML or the old text form (tried in that order). Parsing checks
// the whole file once and copies nothing: values are handles into the file's bytes, and texts, numbers and data are
// made only when they are asked for. Reading 16 records of a 100 MB file costs memory for 16 records.
//
// The forms:
//  - binary: "bplist0" and one more character, objects, an offset table, a 32-byte trailer. Integers of 1, 2 and 4
//  bytes
//    are unsigned, of 8 signed, of 16 signed too; texts ASCII or UTF-16 big-endian (a lone surrogate reads as U+FFFD);
//    dates doubles of seconds since 2001. Null, set and UID objects exist and have kinds of their own. Keys are
//    strings. Cycles are an error.
//  - XML: `<plist>` is optional, one object inside. The five named entities, numeric ones, CDATA, comments and
//  processing
//    instructions anywhere; a DOCTYPE is passed over and defines nothing. Unknown tags, text between elements, and
//    `<data/>` or empty dates, reals and integers, are errors. Integers decimal or 0x, −2^63 to 2^64−1; dates
//    YYYY-MM-DDThh:mm:ssZ and nothing else.
//  - old text: `{k=v;}`, `(a,b)`, `<hex>`, quoted and bare strings, comments. Every scalar is a string or data.
//
// XML and text are UTF-8 unless a byte-order mark or the XML declaration says otherwise; what is invalid in the file's
// encoding is an error. Containers deeper than `greatestDepth` are an error in every form. A file cut off anywhere, and
// lengths and offsets that lie, are errors, never reads outside the bytes. Parsing takes time and memory in proportion
// to the file: for binary two bytes an object, for XML and text nothing that grows.
//
// Values stay valid as long as their `PropertyList` lives (it may be moved). Reading from several threads is safe.
#pragma once

#include "Platform/Foundation/Data.h"
#include "Platform/Foundation/Date.h"
#include "Platform/Foundation/EncodedData.h"
#include "Platform/PropertyList/PropertyListSource.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>

namespace platform {

/// One value of a `PropertyList`: a handle of two words.
class PropertyListValue {
  public:
    using Kind = PropertyListKind;

    Kind kind() const { return place_.kind(); }

    /// The value as the kind it is, or nothing if it is of another kind: an integer is no boolean and no real.
    std::optional<std::string> string() const;
    /// Nothing also for an integer outside of 64 signed bits.
    std::optional<std::int64_t> integer() const;
    std::optional<bool> boolean() const;
    std::optional<Date> date() const;
    /// Shares the file's bytes, and keeps them alive: raw in a binary file, base64 in XML.
    std::optional<EncodedData> data() const;
    /// An integer or a real, as a real.
    std::optional<double> number() const;

    /// The number of an array's elements; nothing if this is no array.
    std::optional<std::size_t> arrayCount() const;

    /// Calls `visit(PropertyListValue)` with every element in order, until it answers false. False if this is no array.
    template <typename Visitor>
    bool forEachElement(Visitor&& visit) const;

    /// Calls `visit(const std::string& key, PropertyListValue)` with every key and value in the file's order, until it
    /// answers false; a key that stands there twice is visited twice. False if this is no dictionary.
    template <typename Visitor>
    bool forEachEntry(Visitor&& visit) const;

    /// Fills `found[i]` with the value for `keys[i]`, nothing where there is none, in one pass over the dictionary; of
    /// a duplicate key the last counts. False if this is no dictionary. At most 64 keys, all different; `found` has
    /// room for as many.
    bool select(std::span<const std::string_view> keys, std::span<std::optional<PropertyListValue>> found) const;

    /// The value for one key.
    std::optional<PropertyListValue> operator[](std::string_view key) const;

    /// Whether this is an array and every element is a dictionary.
    bool isArrayOfDictionaries() const;

  private:
    friend class PropertyList;
    PropertyListValue(const PropertyListSource* source, PropertyListPlace place) : source_(source), place_(place) {}

    const PropertyListSource* source_;
    PropertyListPlace place_;
};

class PropertyList {
  public:
    static constexpr int greatestDepth = 512;

    /// The file's content as a property list, or nothing if it is none in any form.
    static std::optional<PropertyList> parse(const Data& file);

    PropertyListValue root() const { return {source_.get(), source_->root()}; }

  private:
    explicit PropertyList(std::unique_ptr<const PropertyListSource> source) : source_(std::move(source)) {}
    std::unique_ptr<const PropertyListSource> source_;
};

template <typename Visitor>
bool PropertyListValue::forEachElement(Visitor&& visit) const {
    if (kind() != Kind::array) {
        return false;
    }
    PropertyListSource::Cursor cursor = source_->walk(place_);
    while (const auto place = source_->nextElement(cursor)) {
        if (!visit(PropertyListValue(source_, *place))) {
            break;
        }
    }
    return true;
}

template <typename Visitor>
bool PropertyListValue::forEachEntry(Visitor&& visit) const {
    if (kind() != Kind::dictionary) {
        return false;
    }
    PropertyListSource::Cursor cursor = source_->walk(place_);
    PropertyListSource::Entry entry;
    while (source_->nextEntry(cursor, entry)) {
        if (!visit(std::as_const(entry.key), PropertyListValue(source_, entry.value))) {
            break;
        }
    }
    return true;
}

} // namespace platform
