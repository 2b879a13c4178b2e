#include "Platform/PropertyList/BinaryPropertyList.h"

#include "Platform/Foundation/Utf8.h"
#include "Platform/PropertyList/PropertyList.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>

namespace platform {

namespace {

using Kind = PropertyListKind;
using Notation = PropertyListNotation;
using Node = PropertyListNode;

constexpr std::uint64_t headerSize = 8;
constexpr std::uint64_t trailerSize = 32;

class Reader {
  public:
    explicit Reader(const Data& file) : tree_{.file = file}, bytes_(file.bytes()) {}

    std::optional<PropertyListTree> read() {
        if (!readTrailer()) {
            return std::nullopt;
        }
        objects_.resize(objectCount_);
        states_.resize(objectCount_);
        // Most objects are values of dictionaries, each beside its key.
        tree_.nodes.reserve(2 * objectCount_);
        const Node* const root = object(rootObject_, 0);
        if (root == nullptr) {
            return std::nullopt;
        }
        tree_.root = *root;
        return std::move(tree_);
    }

  private:
    enum class State : std::uint8_t { unread, open, read };

    bool readTrailer() {
        if (!bytes_.starts_with("bplist0") || bytes_.size() < headerSize + trailerSize) {
            return false;
        }
        const std::uint64_t trailer = bytes_.size() - trailerSize;
        offsetSize_ = number(trailer + 6, 1);
        referenceSize_ = number(trailer + 7, 1);
        objectCount_ = number(trailer + 8, 8);
        rootObject_ = number(trailer + 16, 8);
        objectsEnd_ = number(trailer + 24, 8);
        const auto isWidth = [](std::uint64_t width) { return width >= 1 && width <= 8; };
        if (!isWidth(offsetSize_) || !isWidth(referenceSize_) || objectsEnd_ < headerSize || objectsEnd_ > trailer) {
            return false;
        }
        // Every object has a byte or more. This bounds the memory that a wrong count can allocate.
        bytesLeft_ = objectsEnd_ - headerSize;
        return rootObject_ < objectCount_ && objectCount_ <= bytesLeft_ && objectCount_ <= PropertyList::maxValues &&
               objectCount_ <= (trailer - objectsEnd_) / offsetSize_;
    }

    /// Reads the number of `width` (1 to 8) bytes at `offset`. Requires an offset before the trailer's last word, since
    /// it reads a whole word.
    std::uint64_t number(std::uint64_t offset, std::uint64_t width) const {
        std::uint64_t word = 0;
        std::memcpy(&word, bytes_.data() + offset, sizeof word);
        if constexpr (std::endian::native == std::endian::little) {
            word = __builtin_bswap64(word);
        }
        return word >> (64 - 8 * width);
    }

    // NOLINTBEGIN(misc-no-recursion): as deep as the list is nested, within bounds
    /// Returns the object of that number; null if it is damaged, contains itself or is nested too deeply.
    const Node* object(std::uint64_t index, int depth) {
        if (index >= objectCount_ || states_[index] == State::open || depth > PropertyList::maxDepth) {
            return nullptr;
        }
        if (states_[index] == State::unread) {
            states_[index] = State::open;
            const std::optional<Node> node = readObject(number(objectsEnd_ + index * offsetSize_, offsetSize_), depth);
            if (!node) {
                return nullptr;
            }
            objects_[index] = *node;
            states_[index] = State::read;
        }
        return &objects_[index];
    }

    std::optional<Node> readObject(std::uint64_t offset, int depth) {
        if (offset < headerSize || offset >= objectsEnd_) {
            return std::nullopt;
        }
        const std::uint64_t marker = number(offset, 1);
        const std::uint64_t low = marker & 0xFU;
        const std::uint64_t content = offset + 1;
        switch (marker >> 4U) {
        case 0x0:
            return low == 0   ? std::optional(Node{.kind = Kind::null})
                   : low == 8 ? std::optional(Node{.kind = Kind::boolean, .content = 0})
                   : low == 9 ? std::optional(Node{.kind = Kind::boolean, .content = 1})
                              : std::nullopt;
        case 0x1:
            return low <= 4 && take(content, 1, 1U << low) ? std::optional(integer(content, 1U << low)) : std::nullopt;
        case 0x2:
            return (low == 2 || low == 3) && take(content, 1, 1U << low)
                       ? std::optional(Node{.kind = Kind::real, .content = realBits(content, 1U << low)})
                       : std::nullopt;
        case 0x3:
            return low == 3 && take(content, 1, 8)
                       ? std::optional(Node{.kind = Kind::date, .content = number(content, 8)})
                       : std::nullopt;
        case 0x8:
            return take(content, low + 1, 1) ? std::optional(Node{.kind = Kind::uid}) : std::nullopt;
        default:
            return readSized(marker >> 4U, low, content, depth);
        }
    }

    /// Reads an object with `count` units. If `count` is 15, the count follows as an integer object.
    std::optional<Node> readSized(std::uint64_t type, std::uint64_t count, std::uint64_t content, int depth) {
        if (count == 0xF) {
            const std::uint64_t marker = content < objectsEnd_ ? number(content, 1) : 0;
            if (marker < 0x10 || marker > 0x13) {
                return std::nullopt;
            }
            const std::uint64_t width = std::uint64_t{1} << (marker & 0xFU);
            count = number(content + 1, width);
            content += 1 + width;
        }
        switch (type) {
        case 0x4:
            return take(content, count, 1) ? bytes(Kind::data, Notation::plain, content, count) : std::nullopt;
        case 0x5:
            return take(content, count, 1) && isAscii(bytes_.substr(content, count))
                       ? bytes(Kind::string, Notation::plain, content, count)
                       : std::nullopt;
        case 0x6:
            return take(content, count, 2) ? bytes(Kind::string, Notation::utf16, content, 2 * count) : std::nullopt;
        case 0xA:
            return take(content, count, referenceSize_) ? container(Kind::array, content, count, depth) : std::nullopt;
        case 0xC:
            return take(content, count, referenceSize_) ? container(Kind::set, content, count, depth) : std::nullopt;
        case 0xD:
            return take(content, count, 2 * referenceSize_) ? container(Kind::dictionary, content, count, depth)
                                                            : std::nullopt;
        default:
            return std::nullopt;
        }
    }

    std::optional<Node> container(Kind kind, std::uint64_t content, std::uint64_t count, int depth) {
        const bool isDictionary = kind == Kind::dictionary;
        const std::uint64_t childCount = isDictionary ? 2 * count : count;
        Node node{
            .kind = kind, .height = 1, .count = static_cast<std::uint32_t>(childCount), .content = tree_.nodes.size()};
        if (childCount > PropertyList::maxValues - tree_.nodes.size()) {
            return std::nullopt;
        }
        tree_.nodes.resize(tree_.nodes.size() + childCount);
        for (std::uint64_t index = 0; index < childCount; ++index) {
            const std::uint64_t reference = !isDictionary ? index : index % 2 * count + index / 2;
            const Node* const child = object(number(content + reference * referenceSize_, referenceSize_), depth + 1);
            const bool mustBeKey = isDictionary && index % 2 == 0;
            if (child == nullptr || (mustBeKey && child->kind != Kind::string)) {
                return std::nullopt;
            }
            tree_.nodes[node.content + index] = *child;
            node.height = std::max<std::uint16_t>(node.height, child->height + 1);
        }
        return node.height <= PropertyList::maxDepth ? std::optional(node) : std::nullopt;
    }
    // NOLINTEND(misc-no-recursion)

    /// Counts the bytes of an object. Returns false if they reach into the offset table, or all objects exceed the
    /// file.
    bool take(std::uint64_t content, std::uint64_t count, std::uint64_t unitSize) {
        // A count no greater than the file, times 16 at most, does not overflow.
        if (content > objectsEnd_ || count > objectsEnd_ || count * unitSize > objectsEnd_ - content ||
            count * unitSize >= bytesLeft_) {
            return false;
        }
        bytesLeft_ -= count * unitSize + 1;
        return true;
    }

    static std::optional<Node> bytes(Kind kind, Notation notation, std::uint64_t offset, std::uint64_t size) {
        return Node{.kind = kind, .notation = notation, .count = static_cast<std::uint32_t>(size), .content = offset};
    }

    /// Up to 4 bytes are unsigned, 8 and 16 signed.
    Node integer(std::uint64_t offset, std::uint64_t width) const {
        Node node{.kind = Kind::integer, .content = number(offset, width > 8 ? 8 : width)};
        if (width == 16) {
            const auto high = static_cast<std::int64_t>(node.content);
            const std::uint64_t low = number(offset + 8, 8);
            node.content = low;
            if (high != (static_cast<std::int64_t>(low) < 0 ? -1 : 0)) {
                node.notation = Notation::wide;
                const double value = std::ldexp(static_cast<double>(high), 64) + static_cast<double>(low);
                node.content = std::bit_cast<std::uint64_t>(value);
            }
        }
        return node;
    }

    std::uint64_t realBits(std::uint64_t offset, std::uint64_t width) const {
        const std::uint64_t bits = number(offset, width);
        return width == 8
                   ? bits
                   : std::bit_cast<std::uint64_t>(double{std::bit_cast<float>(static_cast<std::uint32_t>(bits))});
    }

    PropertyListTree tree_;
    std::string_view bytes_;
    std::uint64_t offsetSize_ = 0;
    std::uint64_t referenceSize_ = 0;
    std::uint64_t objectCount_ = 0;
    std::uint64_t rootObject_ = 0;
    /// The offset of the offset table.
    std::uint64_t objectsEnd_ = 0;
    /// The maximum size of the objects that are not read yet.
    std::uint64_t bytesLeft_ = 0;
    std::vector<Node> objects_;
    std::vector<State> states_;
};

} // namespace

std::optional<PropertyListTree> readBinaryPropertyList(const Data& file) {
    return Reader(file).read();
}

} // namespace platform
