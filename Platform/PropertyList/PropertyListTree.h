// A checked property list of any form in memory: one small node a value. Strings and data stay in the
// file's bytes until they are read.
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

/// How the file writes a node's content.
enum class PropertyListNotation : std::uint8_t {
    /// Strings as UTF-8, data as they are, integers that fit 64 signed bits.
    plain,
    /// A string as UTF-16, big-endian.
    utf16,
    /// A string with references, sections or comments of XML.
    xmlText,
    /// Data as base64, and the same between references, sections or comments of XML.
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
    /// Of a container, the maximum depth of containers in it, itself included.
    std::uint16_t height = 0;
    /// Bytes of strings and data. Children of containers: a dictionary has two an entry, the key and the value.
    std::uint32_t count = 0;
    /// Offset of the bytes, index of the first child, integer, or the bits of a double.
    std::uint64_t content = 0;
};

struct PropertyListTree {
    Data file;
    PropertyListNode root{};
    /// The children of every container, next to each other.
    std::vector<PropertyListNode> nodes{};

    std::string_view bytes(const PropertyListNode& node) const { return file.bytes().substr(node.content, node.count); }
    std::span<const PropertyListNode> children(const PropertyListNode& container) const {
        return {nodes.data() + container.content, container.count};
    }
};

/// Collects the nodes of containers within each other: `mark`, `add` for each child, `close`.
class PropertyListCollector {
  public:
    explicit PropertyListCollector(std::vector<PropertyListNode>& nodes) : nodes_(nodes) {}

    /// Where the children of a container begin that is opened now.
    std::size_t mark() const { return open_.size(); }

    /// False if the list has too many values.
    [[nodiscard]] bool add(const PropertyListNode& child);

    /// The container of all children added since `mark`; nothing if it is nested too deeply.
    std::optional<PropertyListNode> close(PropertyListKind kind, std::size_t mark);

  private:
    std::vector<PropertyListNode>& nodes_;
    std::vector<PropertyListNode> open_;
};

} // namespace platform
