// Property lists: files in the binary, the XML or the old text form, tried in that order.
//
// Parsing checks the whole file and makes a small node for each value. Strings and data stay in the file's bytes until
// they are read, so reading 16 records of a 100 MB file copies 16 records.
//
// The forms:
// - binary: "bplist0" and one more character, objects, an offset table, a 32-byte trailer. Integers of 1, 2 and 4 bytes
//   are unsigned, of 8 and 16 signed; strings ASCII or UTF-16 big-endian (a lone surrogate reads as U+FFFD); dates are
//   doubles of seconds since 2001. Null, set and UID are kinds of their own. Keys are strings. Cycles are an error.
// - XML: `<plist>` is optional, one object inside. The five named entities, numeric ones, CDATA, comments and
//   processing instructions; a DOCTYPE defines nothing. Unknown tags, text between elements, `<data/>` and empty dates,
//   reals and integers are errors. Integers decimal or 0x, −2^63 to 2^64−1; dates YYYY-MM-DDThh:mm:ssZ alone.
// - old text: `{k=v;}`, `(a,b)`, `<hex>`, quoted and bare strings, comments. Every scalar is a string or data.
//
// The encoding of XML and text is that of TextEncoding.h; invalid bytes are an error. So are containers deeper than
// `maxDepth`, more than `maxValues` values, files that are cut off, and wrong lengths and offsets. Parsing takes time
// in proportion to the file, and memory in proportion to its values.
//
// Values borrow from their `PropertyList`, which may be moved. Any thread.
#pragma once

#include "Platform/Foundation/Date.h"
#include "Platform/Foundation/EncodedData.h"
#include "Platform/PropertyList/PropertyListTree.h"

#include <memory>
#include <string>
#include <utility>

namespace platform {

/// One value of a `PropertyList`: a handle of two words.
class PropertyListValue {
  public:
    using Kind = PropertyListKind;

    Kind kind() const { return node_->kind; }

    /// These return nothing for a value of another kind: an integer is neither a boolean nor a real.
    std::optional<std::string> string() const;
    /// Returns nothing also for an integer outside of 64 signed bits.
    std::optional<std::int64_t> integer() const;
    std::optional<bool> boolean() const;
    std::optional<Date> date() const;
    /// Returns bytes that share the file's memory: raw in a binary file, base64 in XML.
    std::optional<EncodedData> data() const;
    /// Returns an integer or a real, as a real.
    std::optional<double> number() const;

    /// Returns the number of an array's elements; nothing if this is not an array.
    std::optional<std::size_t> arrayCount() const;

    /// Calls `visit(PropertyListValue)` with every element in order, until it returns false. Returns false if this is
    /// not an array.
    template <typename Visitor>
    bool forEachElement(Visitor&& visit) const;

    /// Calls `visit(const std::string& key, PropertyListValue)` with every key and value in the file's order, until it
    /// returns false; a duplicate key twice. Returns false if this is not a dictionary.
    template <typename Visitor>
    bool forEachEntry(Visitor&& visit) const;

    /// Sets `found[i]` to the value for `keys[i]`, or to nothing, in one pass over the dictionary. The last of
    /// duplicate keys counts. Returns false if this is not a dictionary. Requires different keys, and as many elements
    /// in `found`.
    bool select(std::span<const std::string_view> keys, std::span<std::optional<PropertyListValue>> found) const;

    /// Returns the value for a key.
    std::optional<PropertyListValue> operator[](std::string_view key) const;

    /// Returns whether this is an array of dictionaries only.
    bool isArrayOfDictionaries() const;

  private:
    friend class PropertyList;
    PropertyListValue(const PropertyListTree& tree, const PropertyListNode& node) : tree_(&tree), node_(&node) {}

    std::span<const PropertyListNode> children() const { return tree_->children(*node_); }
    /// Requires a string.
    std::string text() const;

    const PropertyListTree* tree_;
    const PropertyListNode* node_;
};

class PropertyList {
  public:
    static constexpr int maxDepth = 512;
    static constexpr std::size_t maxValues = std::size_t{1} << 23U;

    /// Returns nothing if the file has none of the forms.
    static std::optional<PropertyList> parse(const Data& file);

    PropertyListValue root() const { return {*tree_, tree_->root}; }

  private:
    explicit PropertyList(PropertyListTree tree) : tree_(std::make_unique<const PropertyListTree>(std::move(tree))) {}
    std::unique_ptr<const PropertyListTree> tree_;
};

template <typename Visitor>
bool PropertyListValue::forEachElement(Visitor&& visit) const {
    if (kind() != Kind::array) {
        return false;
    }
    for (const PropertyListNode& element : children()) {
        if (!visit(PropertyListValue(*tree_, element))) {
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
    for (auto rest = children(); !rest.empty(); rest = rest.subspan(2)) {
        const std::string key = PropertyListValue(*tree_, rest[0]).text();
        if (!visit(key, PropertyListValue(*tree_, rest[1]))) {
            break;
        }
    }
    return true;
}

} // namespace platform
