// The check of a binary property list.
//
// It goes over all objects once, in the table's order, so that the next ones are fetched from memory ahead of time, and
// notes what each is. Then it follows the references from the root through the containers: everything reachable must be
// sound, keys strings, nothing its own container, and nothing deeper than allowed.
//
// The objects of an honest file do not overlap: all of them together are no longer than the bytes that hold them. What
// goes beyond counts as damaged, so that no file makes the check take longer than its own size.
#pragma once

#include "Platform/PropertyList/BinaryKeys.h"
#include "Platform/PropertyList/BinaryLayout.h"
#include "Platform/PropertyList/BinaryObjectTable.h"

#include <cstdint>
#include <string_view>
#include <vector>

namespace platform {

class BinaryChecker {
  public:
    /// `objects` is a table of damaged ones; it and `keys` are filled on the way.
    BinaryChecker(const BinaryLayout& layout, BinaryObjectTable& objects, BinaryKeys& keys)
        : layout_(layout), objects_(objects), keys_(keys) {}

    /// Whether everything that the root reaches is sound.
    bool check();

  private:
    /// A container on the way from the root to where the check stands.
    struct OpenContainer {
        std::uint64_t index = 0;
        /// Offset of the next reference to a value, and how many are left.
        std::uint64_t next = 0;
        std::uint64_t left = 0;
        unsigned height = 1;
    };

    void noteKinds();
    bool checkContainers();
    bool enter(std::uint64_t index);
    void leave();
    bool checkKeys(const BinaryObject& dictionary);
    bool passScalars(OpenContainer& container) const;
    std::uint64_t nextReference(OpenContainer& container) const;

    const BinaryLayout& layout_;
    BinaryObjectTable& objects_;
    BinaryKeys& keys_;
    std::vector<OpenContainer> path_;
    /// The references to keys of the dictionary that was checked last: the next one's are the same in most cases.
    std::string_view lastKeys_;
};

} // namespace platform
