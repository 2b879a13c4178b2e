#include "Platform/PropertyList/BinaryObjectTable.h"

#include "Platform/PropertyList/PropertyList.h"
#include "Platform/PropertyList/Unicode.h"

#include <algorithm>

namespace platform {

namespace {

/// So many objects ahead, a cache line has arrived when its turn comes.
constexpr std::uint64_t prefetchDistance = 24;

/// A container on the way from the root to where the check stands.
struct OpenContainer {
    std::uint64_t index = 0;
    /// Offset of the next reference to a value, and how many are left.
    std::uint64_t next = 0;
    std::uint64_t left = 0;
    unsigned height = 1;
};

} // namespace

bool BinaryObjectTable::isContainer(Note note) const {
    switch (static_cast<PropertyListKind>(note & kindMask)) {
    case PropertyListKind::array:
    case PropertyListKind::dictionary:
    case PropertyListKind::set:
        return true;
    default:
        return false;
    }
}

void BinaryObjectTable::setHeight(std::uint64_t index, unsigned height) {
    notes_[index] = static_cast<Note>((notes_[index] & kindMask) | height << heightShift);
}

std::optional<BinaryObjectTable> BinaryObjectTable::check(const BinaryLayout& layout) {
    BinaryObjectTable table(layout);
    table.noteKinds(layout);
    if (!table.checkContainers(layout)) {
        return std::nullopt;
    }
    return table;
}

void BinaryObjectTable::noteKinds(const BinaryLayout& layout) {
    std::uint64_t bytesLeft = layout.objectBytes();
    const std::uint64_t last = layout.objectCount() - 1;
    for (std::uint64_t index = 0; index <= last; ++index) {
        __builtin_prefetch(layout.whereabouts(std::min(index + prefetchDistance, last)));
        notes_[index] = damaged;
        const BinaryObject object = layout.object(index);
        if (!object.isSound() || object.payloadSize() >= bytesLeft) {
            continue;
        }
        bytesLeft -= object.payloadSize() + 1;
        const bool isAsciiText = object.kind() == PropertyListKind::string && object.unitSize() == 1;
        if (!isAsciiText || isAscii(layout.bytes(object.payload(), object.count()))) {
            notes_[index] = static_cast<Note>(object.kind());
        }
    }
}

bool BinaryObjectTable::checkContainers(const BinaryLayout& layout) {
    std::vector<OpenContainer> path;
    const auto enter = [&](std::uint64_t index) {
        const BinaryObject object = layout.object(index);
        OpenContainer container{.index = index, .next = object.payload(), .left = object.count()};
        if (object.kind() == PropertyListKind::dictionary) {
            for (std::uint64_t key = 0; key < object.count(); ++key, container.next += layout.referenceSize()) {
                const std::uint64_t reference = layout.reference(container.next);
                if (reference >= layout.objectCount() ||
                    notes_[reference] != static_cast<Note>(PropertyListKind::string)) {
                    return false;
                }
            }
        }
        setHeight(index, open);
        path.push_back(container);
        return path.size() <= PropertyList::greatestDepth;
    };

    if (!isContainer(notes_[layout.rootObject()])) {
        return notes_[layout.rootObject()] != damaged;
    }
    if (!enter(layout.rootObject())) {
        return false;
    }
    while (!path.empty()) {
        OpenContainer& container = path.back();
        if (container.left == 0) {
            const unsigned height = container.height;
            setHeight(container.index, height);
            path.pop_back();
            if (!path.empty()) {
                path.back().height = std::max(path.back().height, height + 1);
            }
            continue;
        }
        const std::uint64_t reference = layout.reference(container.next);
        container.next += layout.referenceSize();
        --container.left;
        if (reference >= layout.objectCount() || notes_[reference] == damaged) {
            return false;
        }
        if (!isContainer(notes_[reference])) {
            continue;
        }
        if (const unsigned known = height(reference); known == 0) {
            if (!enter(reference)) {
                return false;
            }
        } else if (known == open || path.size() + known > PropertyList::greatestDepth) {
            return false;
        } else {
            container.height = std::max(container.height, known + 1);
        }
    }
    return true;
}

} // namespace platform
