#include "Platform/PropertyList/PropertyListTree.h"

#include "Platform/PropertyList/PropertyList.h"

#include <algorithm>

namespace platform {

bool PropertyListCollector::add(const PropertyListNode& child) {
    open_.push_back(child);
    return nodes_.size() + open_.size() <= PropertyList::maxValues;
}

std::optional<PropertyListNode> PropertyListCollector::close(PropertyListKind kind, std::size_t mark) {
    PropertyListNode container{.kind = kind, .height = 1, .content = nodes_.size()};
    for (std::size_t index = mark; index < open_.size(); ++index) {
        container.height = std::max<std::uint16_t>(container.height, open_[index].height + 1);
        nodes_.push_back(open_[index]);
    }
    container.count = static_cast<std::uint32_t>(open_.size() - mark);
    open_.resize(mark);
    return container.height <= PropertyList::maxDepth ? std::optional(container) : std::nullopt;
}

} // namespace platform
