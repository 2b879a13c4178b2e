// A property list of any form in memory, checked: a small node for each value. Strings and data stay in the file's
// bytes until they are read.
#pragma once

#include "Platform/Foundation/Data.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace platform {

enum class PropertyListKind : std::uint8_t {
    string,
    integer,
    real,
    boolean,
    date,
    data,
    array,
    dictionary,
    set,
    null,
    uid
};

/// The form of a node's content in the file.
enum class PropertyListNotation : std::uint8_t {
    /// Strings in UTF-8, raw data, integers of 64 signed bits.
    plain,
    /// A string in UTF-16, big-endian.
    utf16,
    /// A string with XML's references, sections or comments.
    xmlText,
    /// Data in base64, without and with XML's references, sections or comments.
    base64,
    base64InXmlText,
    /// A string with backslash escapes.
    escaped,
    /// Data as hexadecimal digits, with blanks.
    hexadecimal,
    /// An integer that does not fit 64 signed bits; the content is a double.
    wide
};

struct PropertyListNode {
    PropertyListKind kind = PropertyListKind::null;
    PropertyListNotation notation = PropertyListNotation::plain;
    /// The maximum depth of containers in a container, itself included.
    std::uint16_t height = 0;
    /// The bytes of strings and data, the children of containers: two for an entry of a dictionary, the key and the
    /// value.
    std::uint32_t count = 0;
    /// The offset of the bytes, the index of the first child, an integer, or the bits of a double.
    std::uint64_t content = 0;
};

struct PropertyListTree {
    Data file;
    PropertyListNode root{};
    /// The children of all containers. Those of one are next to each other.
    std::vector<PropertyListNode> nodes{};

    std::string_view bytes(const PropertyListNode& node) const { return file.bytes().substr(node.content, node.count); }
    std::span<const PropertyListNode> children(const PropertyListNode& container) const {
        return {nodes.data() + container.content, container.count};
    }
};

/// Collects the nodes of nested containers: `mark`, then `add` for each child, then `close`.
class PropertyListCollector {
  public:
    explicit PropertyListCollector(std::vector<PropertyListNode>& nodes) : nodes_(nodes) {}

    /// Returns the start of a new container.
    std::size_t mark() const { return open_.size(); }

    /// Returns false if the list has too many values.
    [[nodiscard]] bool add(const PropertyListNode& child);

    /// Returns the container of all children added since `mark`; nothing if it is nested too deeply.
    std::optional<PropertyListNode> close(PropertyListKind kind, std::size_t mark);

  private:
    std::vector<PropertyListNode>& nodes_;
    std::vector<PropertyListNode> open_;
};

} // namespace platform
