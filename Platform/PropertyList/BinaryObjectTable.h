// What is known of the objects of a binary property list: of each its kind and, for the time of the check, how far the
// check has come with it. Two bytes an object.
#pragma once

#include "Platform/PropertyList/PropertyListSource.h"

#include <cstdint>
#include <vector>

namespace platform {

class BinaryObjectTable {
  public:
    /// In place of the height of a container that is being checked, and more than is allowed: whoever meets it has
    /// found a cycle.
    static constexpr unsigned open = 0x7FF;

    /// A table of damaged objects.
    explicit BinaryObjectTable(std::uint64_t objectCount) : notes_(objectCount, damaged) {}

    std::uint64_t size() const { return notes_.size(); }

    /// What no sound object refers to.
    bool isDamaged(std::uint64_t index) const { return notes_[index] == damaged; }

    PropertyListKind kind(std::uint64_t index) const { return static_cast<PropertyListKind>(notes_[index] & kindMask); }
    void setKind(std::uint64_t index, PropertyListKind kind) { notes_[index] = static_cast<Note>(kind); }

    /// Of a container, how many lie within each other from it on; 0 while it is not known.
    unsigned height(std::uint64_t index) const { return notes_[index] >> heightShift; }
    void setHeight(std::uint64_t index, unsigned height) {
        notes_[index] = static_cast<Note>((notes_[index] & kindMask) | height << heightShift);
    }

  private:
    using Note = std::uint16_t;
    static constexpr Note kindMask = 0x1F;
    static constexpr Note damaged = kindMask;
    static constexpr unsigned heightShift = 5;

    std::vector<Note> notes_;
};

} // namespace platform
