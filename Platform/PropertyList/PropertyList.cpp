#include "Platform/PropertyList/PropertyList.h"

#include "Platform/Foundation/TextEncoding.h"
#include "Platform/PropertyList/BinaryPropertyList.h"
#include "Platform/PropertyList/KeySelection.h"
#include "Platform/PropertyList/TextPropertyList.h"
#include "Platform/PropertyList/XmlPropertyList.h"

#include <cassert>

namespace platform {

std::optional<std::string> PropertyListValue::string() const {
    if (kind() != Kind::string) {
        return std::nullopt;
    }
    return source_->string(place_);
}

std::optional<std::int64_t> PropertyListValue::integer() const {
    if (kind() != Kind::integer) {
        return std::nullopt;
    }
    return source_->integer(place_);
}

std::optional<bool> PropertyListValue::boolean() const {
    if (kind() != Kind::boolean) {
        return std::nullopt;
    }
    return source_->boolean(place_);
}

std::optional<Date> PropertyListValue::date() const {
    if (kind() != Kind::date) {
        return std::nullopt;
    }
    return source_->date(place_);
}

std::optional<EncodedData> PropertyListValue::data() const {
    if (kind() != Kind::data) {
        return std::nullopt;
    }
    return source_->data(place_);
}

std::optional<double> PropertyListValue::number() const {
    if (kind() != Kind::integer && kind() != Kind::real) {
        return std::nullopt;
    }
    return source_->number(place_);
}

std::optional<std::size_t> PropertyListValue::arrayCount() const {
    if (kind() != Kind::array) {
        return std::nullopt;
    }
    return source_->arrayCount(place_);
}

bool PropertyListValue::select(std::span<const std::string_view> keys,
                               std::span<std::optional<PropertyListValue>> found) const {
    assert(keys.size() <= KeySelection::greatestCount && keys.size() <= found.size());
    if (kind() != Kind::dictionary) {
        return false;
    }
    KeySelection selection(keys);
    source_->select(place_, selection);
    for (std::size_t index = 0; index < keys.size(); ++index) {
        if (selection.isFound(index)) {
            found[index] = PropertyListValue(source_, selection.place(index));
        } else {
            found[index].reset();
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
    return kind() == Kind::array && source_->isArrayOfDictionaries(place_);
}

std::optional<PropertyList> PropertyList::parse(const Data& file) {
    if (auto binary = BinaryPropertyList::parse(file)) {
        return PropertyList(std::move(binary));
    }
    const std::optional<Data> text = convertedToUtf8(file);
    if (!text) {
        return std::nullopt;
    }
    if (auto xml = XmlPropertyList::parse(*text)) {
        return PropertyList(std::move(xml));
    }
    if (auto oldText = TextPropertyList::parse(*text)) {
        return PropertyList(std::move(oldText));
    }
    return std::nullopt;
}

} // namespace platform
