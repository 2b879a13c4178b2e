// What the three forms of a property list have in common: a checked document that answers for the value at a place.
//
// Every function expects a place that the same document handed out, and of the kind that the function's comment names.
// All of them may be called from any thread.
#pragma once

#include "Platform/Foundation/Date.h"
#include "Platform/Foundation/EncodedData.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

namespace platform {

class KeySelection;

/// Containers stand next to each other.
enum class PropertyListKind : std::uint8_t {
    string,
    integer,
    real,
    boolean,
    date,
    data,
    array,
    dictionary,
    set,
    null,
    uid
};

constexpr bool isContainer(PropertyListKind kind) {
    return kind >= PropertyListKind::array && kind <= PropertyListKind::set;
}

/// Where a value lies, together with its kind. The offset is the form's own: a byte of the file or an object's number,
/// below 2^56.
class PropertyListPlace {
  public:
    PropertyListPlace() = default;
    PropertyListPlace(PropertyListKind kind, std::uint64_t offset)
        : bits_(static_cast<std::uint64_t>(kind) << kindShift | offset) {}

    PropertyListKind kind() const { return static_cast<PropertyListKind>(bits_ >> kindShift); }
    std::uint64_t offset() const { return bits_ & ((std::uint64_t{1} << kindShift) - 1); }

  private:
    static constexpr unsigned kindShift = 56;
    std::uint64_t bits_;
};

class PropertyListSource {
  public:
    using Place = PropertyListPlace;

    /// How far a walk over a container has come. What the members hold is the form's own business.
    struct Cursor {
        std::uint64_t next = 0;
        std::uint64_t left = 0;
        std::uint64_t valueDistance = 0;
        bool isAtValue = false;
    };

    struct Entry {
        std::string key;
        Place value;
    };

    PropertyListSource() = default;
    PropertyListSource(const PropertyListSource&) = delete;
    PropertyListSource& operator=(const PropertyListSource&) = delete;
    virtual ~PropertyListSource() = default;

    virtual Place root() const = 0;

    /// A string's characters, as UTF-8.
    virtual std::string string(Place place) const = 0;
    /// An integer, or nothing if it is outside of 64 signed bits.
    virtual std::optional<std::int64_t> integer(Place place) const = 0;
    /// An integer or a real.
    virtual double number(Place place) const = 0;
    virtual bool boolean(Place place) const = 0;
    virtual Date date(Place place) const = 0;
    virtual EncodedData data(Place place) const = 0;

    /// The start of a walk over an array or a dictionary.
    virtual Cursor walk(Place container) const = 0;
    /// The next element of an array, or nothing after the last.
    virtual std::optional<Place> nextElement(Cursor& cursor) const = 0;
    /// Puts the next key and value of a dictionary into `entry`; false after the last.
    virtual bool nextEntry(Cursor& cursor, Entry& entry) const = 0;

    virtual std::size_t arrayCount(Place array) const = 0;
    virtual bool isArrayOfDictionaries(Place array) const = 0;
    /// Tells `selection` of every value of a dictionary whose key it wants, in the file's order.
    virtual void select(Place dictionary, KeySelection& selection) const = 0;
};

} // namespace platform
