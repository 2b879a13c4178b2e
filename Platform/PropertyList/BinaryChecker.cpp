#include "Platform/PropertyList/BinaryChecker.h"

#include "Platform/Foundation/Unicode.h"
#include "Platform/PropertyList/PropertyList.h"

#include <algorithm>

namespace platform {

bool BinaryChecker::check() {
    noteKinds();
    const std::uint64_t root = layout_.rootObject();
    if (objects_.isDamaged(root)) {
        return false;
    }
    return !isContainer(objects_.kind(root)) || (enter(root) && checkContainers());
}

void BinaryChecker::noteKinds() {
    // So many objects ahead, a line of the cache has arrived when its turn comes.
    constexpr std::uint64_t prefetchDistance = 48;
    std::uint64_t bytesLeft = layout_.objectBytes();
    const std::uint64_t last = layout_.objectCount() - 1;
    for (std::uint64_t index = 0; index <= last; ++index) {
        layout_.prefetch(std::min(index + prefetchDistance, last));
        const BinaryObject object = layout_.object(index);
        if (!object.isSound() || object.payloadSize() >= bytesLeft) {
            continue;
        }
        bytesLeft -= object.payloadSize() + 1;
        if (!object.isAsciiText() || isAscii(layout_.bytes(object.payload(), object.count()))) {
            objects_.setKind(index, object.kind());
        }
    }
}

bool BinaryChecker::checkContainers() {
    while (!path_.empty()) {
        OpenContainer& container = path_.back();
        if (!passScalars(container)) {
            return false;
        }
        if (container.left == 0) {
            leave();
            continue;
        }
        const std::uint64_t child = nextReference(container);
        const unsigned height = objects_.height(child);
        if (height == 0) {
            if (!enter(child)) {
                return false;
            }
        } else if (path_.size() + height > PropertyList::greatestDepth) {
            return false;
        } else {
            container.height = std::max(container.height, height + 1);
        }
    }
    return true;
}

/// Begins the check of a container.
bool BinaryChecker::enter(std::uint64_t index) {
    const BinaryObject object = layout_.object(index);
    std::uint64_t values = object.payload();
    if (object.kind() == PropertyListKind::dictionary) {
        if (!checkKeys(object)) {
            return false;
        }
        values += object.count() * layout_.referenceSize();
    }
    objects_.setHeight(index, BinaryObjectTable::open);
    path_.push_back({.index = index, .next = values, .left = object.count()});
    return path_.size() <= PropertyList::greatestDepth;
}

/// Ends the check of the innermost container.
void BinaryChecker::leave() {
    const OpenContainer container = path_.back();
    path_.pop_back();
    objects_.setHeight(container.index, container.height);
    if (!path_.empty()) {
        path_.back().height = std::max(path_.back().height, container.height + 1);
    }
}

bool BinaryChecker::checkKeys(const BinaryObject& dictionary) {
    const std::string_view references =
        layout_.bytes(dictionary.payload(), dictionary.count() * layout_.referenceSize());
    if (references == lastKeys_) {
        return true;
    }
    for (std::uint64_t offset = 0; offset < references.size(); offset += layout_.referenceSize()) {
        const std::uint64_t key = layout_.reference(dictionary.payload() + offset);
        if (key >= objects_.size() || objects_.kind(key) != PropertyListKind::string) {
            return false;
        }
        keys_.add(key, layout_);
    }
    lastKeys_ = references;
    return true;
}

/// Passes over values that are sound and no containers. False if there is a damaged one.
bool BinaryChecker::passScalars(OpenContainer& container) const {
    for (; container.left > 0; --container.left, container.next += layout_.referenceSize()) {
        const std::uint64_t value = layout_.reference(container.next);
        if (value >= objects_.size() || objects_.isDamaged(value)) {
            return false;
        }
        if (isContainer(objects_.kind(value))) {
            return true;
        }
    }
    return true;
}

std::uint64_t BinaryChecker::nextReference(OpenContainer& container) const {
    const std::uint64_t reference = layout_.reference(container.next);
    container.next += layout_.referenceSize();
    --container.left;
    return reference;
}

} // namespace platform
