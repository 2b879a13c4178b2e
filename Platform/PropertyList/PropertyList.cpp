#include "Platform/PropertyList/PropertyList.h"

#include "Platform/Foundation/TextEncoding.h"
#include "Platform/Foundation/Utf8.h"
#include "Platform/PropertyList/BinaryPropertyList.h"
#include "Platform/PropertyList/TextPropertyList.h"
#include "Platform/PropertyList/XmlPropertyList.h"
#include "Platform/PropertyList/XmlText.h"

#include <algorithm>
#include <bit>
#include <cassert>
#include <limits>

namespace platform {

using Notation = PropertyListNotation;

std::string PropertyListValue::text() const {
    const std::string_view bytes = tree_->bytes(*node_);
    switch (node_->notation) {
    case Notation::utf16:
        return utf8FromUtf16BigEndian(bytes);
    case Notation::xmlText:
        return decodedXmlText(bytes);
    case Notation::escaped:
        return unescapedPropertyListText(bytes);
    default:
        return std::string(bytes);
    }
}

std::optional<std::string> PropertyListValue::string() const {
    return kind() == Kind::string ? std::optional(text()) : std::nullopt;
}

std::optional<std::int64_t> PropertyListValue::integer() const {
    return kind() == Kind::integer && node_->notation == Notation::plain
               ? std::optional(static_cast<std::int64_t>(node_->content))
               : std::nullopt;
}

std::optional<bool> PropertyListValue::boolean() const {
    return kind() == Kind::boolean ? std::optional(node_->content != 0) : std::nullopt;
}

std::optional<Date> PropertyListValue::date() const {
    return kind() == Kind::date ? std::optional(Date{std::bit_cast<double>(node_->content)}) : std::nullopt;
}

std::optional<EncodedData> PropertyListValue::data() const {
    using Encoding = EncodedData::Encoding;
    if (kind() != Kind::data) {
        return std::nullopt;
    }
    const std::string_view bytes = tree_->bytes(*node_);
    switch (node_->notation) {
    case Notation::base64:
        return EncodedData(tree_->file.slice(bytes), Encoding::base64);
    case Notation::base64InXmlText:
        return EncodedData(Data::owning(decodedXmlText(bytes)), Encoding::base64);
    case Notation::hexadecimal:
        return EncodedData(Data::owning(bytesOfHexadecimal(bytes)), Encoding::raw);
    default:
        return EncodedData(tree_->file.slice(bytes), Encoding::raw);
    }
}

std::optional<double> PropertyListValue::number() const {
    if (const auto integer = this->integer()) {
        return static_cast<double>(*integer);
    }
    return kind() == Kind::integer || kind() == Kind::real ? std::optional(std::bit_cast<double>(node_->content))
                                                           : std::nullopt;
}

std::optional<std::size_t> PropertyListValue::arrayCount() const {
    return kind() == Kind::array ? std::optional(children().size()) : std::nullopt;
}

bool PropertyListValue::select(std::span<const std::string_view> keys,
                               std::span<std::optional<PropertyListValue>> found) const {
    assert(keys.size() <= found.size());
    if (kind() != Kind::dictionary) {
        return false;
    }
    std::fill_n(found.begin(), keys.size(), std::nullopt);
    const auto keep = [&](std::string_view key, const PropertyListNode& value) {
        for (std::size_t index = 0; index < keys.size(); ++index) {
            if (keys[index] == key) {
                found[index] = PropertyListValue(*tree_, value);
                return;
            }
        }
    };
    for (auto rest = children(); !rest.empty(); rest = rest.subspan(2)) {
        if (rest[0].notation == Notation::plain) {
            keep(tree_->bytes(rest[0]), rest[1]);
        } else {
            keep(PropertyListValue(*tree_, rest[0]).text(), rest[1]);
        }
    }
    return true;
}

std::optional<PropertyListValue> PropertyListValue::operator[](std::string_view key) const {
    std::optional<PropertyListValue> found;
    select({&key, 1}, {&found, 1});
    return found;
}

bool PropertyListValue::isArrayOfDictionaries() const {
    const auto isDictionary = [](const PropertyListNode& node) { return node.kind == Kind::dictionary; };
    return kind() == Kind::array && std::all_of(children().begin(), children().end(), isDictionary);
}

std::optional<PropertyList> PropertyList::parse(const Data& file) {
    // Nodes have 32 bits for sizes.
    if (file.size() > std::numeric_limits<std::uint32_t>::max()) {
        return std::nullopt;
    }
    std::optional<PropertyListTree> tree = readBinaryPropertyList(file);
    const DecodedText decoded = tree ? DecodedText() : decodedText(file);
    if (!tree && decoded.isWhole) {
        tree = readXmlPropertyList(decoded.text);
    }
    if (!tree && decoded.isWhole) {
        tree = readTextPropertyList(decoded.text);
    }
    return tree ? std::optional(PropertyList(*std::move(tree))) : std::nullopt;
}

} // namespace platform
