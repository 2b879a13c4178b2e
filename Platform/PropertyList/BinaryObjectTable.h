// The check of a binary property list, and what is known of its objects afterwards.
//
// The check goes over all objects once, in the table's order, so that the next ones are fetched from memory ahead of
// time, and notes what each is. Then it follows the references from the root through the containers: everything
// reachable must be sound, keys strings, nothing its own container, and nothing deeper than allowed.
//
// The objects of an honest file do not overlap: all of them together are no longer than the bytes that hold them. What
// goes beyond counts as damaged, so that no file makes the check take longer than its own size.
#pragma once

#include "Platform/PropertyList/BinaryKeys.h"
#include "Platform/PropertyList/BinaryLayout.h"

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace platform {

class BinaryObjectTable {
  public:
    /// The table of a file in which everything that the root reaches is sound, or nothing. The usual keys are put into
    /// `keys`.
    static std::optional<BinaryObjectTable> check(const BinaryLayout& layout, BinaryKeys& keys);

    PropertyListKind kind(std::uint64_t index) const { return kindOf(notes_[index]); }

  private:
    /// An object's kind in the low bits and, of containers, the height in the high ones: how many containers lie within
    /// each other from here on, 0 while it is not known.
    using Note = std::uint16_t;
    static constexpr Note kindMask = 0x1F;
    static constexpr Note damaged = kindMask;
    static constexpr unsigned heightShift = 5;
    /// In place of the height of a container that is being checked: whoever meets it has found a cycle.
    static constexpr unsigned open = 0x7FF;

    /// A container on the way from the root to where the check stands.
    struct OpenContainer {
        std::uint64_t index = 0;
        /// Offset of the next reference to a value, and how many are left.
        std::uint64_t next = 0;
        std::uint64_t left = 0;
        unsigned height = 1;
    };

    static PropertyListKind kindOf(Note note) { return static_cast<PropertyListKind>(note & kindMask); }

    explicit BinaryObjectTable(const BinaryLayout& layout) : notes_(layout.objectCount()) {}

    void noteKinds(const BinaryLayout& layout);
    bool checkContainers(const BinaryLayout& layout, BinaryKeys& keys);
    bool enter(std::uint64_t index, const BinaryLayout& layout, BinaryKeys& keys);
    bool checkKeys(const BinaryObject& dictionary, const BinaryLayout& layout, BinaryKeys& keys);
    bool passScalars(OpenContainer& container, const BinaryLayout& layout) const;

    unsigned height(std::uint64_t index) const { return notes_[index] >> heightShift; }
    void setHeight(std::uint64_t index, unsigned height) {
        notes_[index] = static_cast<Note>((notes_[index] & kindMask) | height << heightShift);
    }

    std::vector<Note> notes_;
    std::vector<OpenContainer> path_;
    /// The references to keys of the dictionary that was checked last.
    std::string_view lastKeys_;
};

} // namespace platform
