// The check of a binary property list, and what is known of its objects afterwards.
//
// The check goes over all objects once, in the table's order, so that the next ones are fetched from memory ahead of
// time, and notes what each is. Then it follows the references from the root through the containers: everything
// reachable must be sound, keys strings, nothing its own container, and nothing deeper than allowed.
//
// The objects of an honest file do not overlap: all of them together are no longer than the bytes that hold them. What
// goes beyond counts as damaged, so that no file makes the check take longer than its own size.
#pragma once

#include "Platform/PropertyList/BinaryLayout.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace platform {

class BinaryObjectTable {
  public:
    /// The table of a file in which everything that the root reaches is sound, or nothing.
    static std::optional<BinaryObjectTable> check(const BinaryLayout& layout);

    PropertyListKind kind(std::uint64_t index) const { return static_cast<PropertyListKind>(notes_[index] & kindMask); }

  private:
    explicit BinaryObjectTable(const BinaryLayout& layout) : notes_(layout.objectCount()) {}

    void noteKinds(const BinaryLayout& layout);
    bool checkContainers(const BinaryLayout& layout);

    /// A note is an object's kind in the low bits and, of containers, the height in the high ones: how many containers
    /// lie within each other from here on.
    using Note = std::uint16_t;
    static constexpr Note kindMask = 0x1F;
    static constexpr Note damaged = kindMask;
    static constexpr unsigned heightShift = 5;
    /// In place of the height of a container that is being checked: whoever meets it has found a cycle.
    static constexpr unsigned open = 0x7FF;

    bool isContainer(Note note) const;
    unsigned height(std::uint64_t index) const { return notes_[index] >> heightShift; }
    void setHeight(std::uint64_t index, unsigned height);

    std::vector<Note> notes_;
};

} // namespace platform
