#include "Platform/PropertyList/BinaryObjectTable.h"

#include "Platform/PropertyList/PropertyList.h"
#include "Platform/PropertyList/Unicode.h"

#include <algorithm>

namespace platform {

std::optional<BinaryObjectTable> BinaryObjectTable::check(const BinaryLayout& layout, BinaryKeys& keys) {
    BinaryObjectTable table(layout);
    table.noteKinds(layout);
    if (!table.checkContainers(layout, keys)) {
        return std::nullopt;
    }
    return table;
}

void BinaryObjectTable::noteKinds(const BinaryLayout& layout) {
    /// So many objects ahead, a cache line has arrived when its turn comes.
    constexpr std::uint64_t prefetchDistance = 48;
    std::uint64_t bytesLeft = layout.objectBytes();
    const std::uint64_t last = layout.objectCount() - 1;
    for (std::uint64_t index = 0; index <= last; ++index) {
        layout.prefetch(std::min(index + prefetchDistance, last));
        const BinaryObject object = layout.object(index);
        if (!object.isSound() || object.payloadSize() >= bytesLeft ||
            (object.isAsciiText() && !isAscii(layout.bytes(object.payload(), object.count())))) {
            notes_[index] = damaged;
            continue;
        }
        bytesLeft -= object.payloadSize() + 1;
        notes_[index] = static_cast<Note>(object.kind());
    }
}

bool BinaryObjectTable::checkContainers(const BinaryLayout& layout, BinaryKeys& keys) {
    const std::uint64_t root = layout.rootObject();
    if (!isContainer(kindOf(notes_[root]))) {
        return notes_[root] != damaged;
    }
    if (!enter(root, layout, keys)) {
        return false;
    }
    while (!path_.empty()) {
        OpenContainer& container = path_.back();
        if (!passScalars(container, layout)) {
            return false;
        }
        if (container.left == 0) {
            const unsigned height = container.height;
            setHeight(container.index, height);
            path_.pop_back();
            if (!path_.empty()) {
                path_.back().height = std::max(path_.back().height, height + 1);
            }
            continue;
        }
        const std::uint64_t child = layout.reference(container.next);
        container.next += layout.referenceSize();
        --container.left;
        if (const unsigned known = height(child); known == 0) {
            if (!enter(child, layout, keys)) {
                return false;
            }
        } else if (known == open || path_.size() + known > PropertyList::greatestDepth) {
            return false;
        } else {
            container.height = std::max(container.height, known + 1);
        }
    }
    return true;
}

/// Begins the check of a container.
bool BinaryObjectTable::enter(std::uint64_t index, const BinaryLayout& layout, BinaryKeys& keys) {
    const BinaryObject object = layout.object(index);
    std::uint64_t values = object.payload();
    if (object.kind() == PropertyListKind::dictionary) {
        if (!checkKeys(object, layout, keys)) {
            return false;
        }
        values += object.count() * layout.referenceSize();
    }
    setHeight(index, open);
    path_.push_back({.index = index, .next = values, .left = object.count()});
    return path_.size() <= PropertyList::greatestDepth;
}

bool BinaryObjectTable::checkKeys(const BinaryObject& dictionary, const BinaryLayout& layout, BinaryKeys& keys) {
    const std::string_view references = layout.bytes(dictionary.payload(), dictionary.count() * layout.referenceSize());
    if (references == lastKeys_) {
        return true;
    }
    for (std::uint64_t offset = 0; offset < references.size(); offset += layout.referenceSize()) {
        const std::uint64_t key = layout.reference(dictionary.payload() + offset);
        if (key >= layout.objectCount() || kindOf(notes_[key]) != PropertyListKind::string) {
            return false;
        }
        keys.add(key, layout);
    }
    lastKeys_ = references;
    return true;
}

/// Passes over values that are sound and no containers. False if there is a damaged one.
bool BinaryObjectTable::passScalars(OpenContainer& container, const BinaryLayout& layout) const {
    for (; container.left > 0; --container.left, container.next += layout.referenceSize()) {
        const std::uint64_t value = layout.reference(container.next);
        if (value >= layout.objectCount() || notes_[value] == damaged) {
            return false;
        }
        if (isContainer(kindOf(notes_[value]))) {
            return true;
        }
    }
    return true;
}

} // namespace platform
