// The arrangement: which widgets are placed on the desktop, in what size, set to what, and where.
//
// A value, and the changes to it as values, too. No effects; any thread.
#pragma once

#include "Platform/Foundation/Failure.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace host {

/// What a user names an instance by: 1, 2, … in the order in which they were added. Never given twice in one file.
using InstanceId = std::uint32_t;

/// The upper left corner, in points from that of the output, or of the whole desktop where no output is named.
struct Position {
    /// How far either may be from 0.
    static constexpr double limit = 100'000;
    double x = 0;
    double y = 0;
    bool operator==(const Position&) const = default;
};

/// The choice's id by the parameter's name. A parameter left out has its default.
using Settings = std::map<std::string, std::string>;

/// Members of the file that this version does not know, as JSON by their names. They stay with the instance or the
/// arrangement that they were read with and are written again.
using UnknownMembers = std::map<std::string, std::string>;

/// A placed widget. All texts are UTF-8; extension, kind and family are not empty.
struct Instance {
    InstanceId id = 0;
    /// The identifier of the extension that has the widget.
    std::string extension;
    std::string kind;
    std::string family;
    Settings configuration;
    /// The screen by its name; left out, the host chooses.
    std::optional<std::string> output;
    /// Left out, the host finds a free place.
    std::optional<Position> position;
    UnknownMembers unknown;
    bool operator==(const Instance&) const = default;
};

struct Arrangement {
    static constexpr std::size_t maxCount = 1000;
    /// In the order in which they were added, each with an id of its own.
    std::vector<Instance> instances;
    /// Greater than every id that was ever given.
    InstanceId nextId = 1;
    /// Tiles stay where they are, whatever the pointer does.
    bool locked = false;
    /// How all tiles use colours, by the protocol's name.
    std::string renderingMode = fullColor;
    UnknownMembers unknown;
    bool operator==(const Arrangement&) const = default;

    static constexpr const char* fullColor = "fullColor";
};

/// Adds `instance` as the last one. Its id is replaced by a fresh one.
struct Addition {
    Instance instance;
};
struct Removal {
    InstanceId id = 0;
};
/// Puts back an instance that was removed, under the id that it had.
struct Restoration {
    Instance instance;
};
/// Chooses anew what `settings` name and leaves the others as they are.
struct Edit {
    InstanceId id = 0;
    Settings settings;
};
/// Without an output, the instance stays on the one that it is on.
struct Move {
    InstanceId id = 0;
    Position position;
    std::optional<std::string> output;
};
struct Resizing {
    InstanceId id = 0;
    std::string family;
};
struct Locking {
    bool locked = false;
};
/// How all tiles use colours: "fullColor", "tinted" or "vibrant".
struct SetRenderingMode {
    std::string renderingMode;
};
using ArrangementChange = std::variant<Addition, Removal, Restoration, Edit, Move, Resizing, Locking, SetRenderingMode>;

/// Returns the arrangement after a change. Fails with `usage` for an unknown id, a full arrangement or an invalid
/// value.
platform::Outcome<Arrangement> applied(Arrangement arrangement, const ArrangementChange& change);

/// Returns the instance with that id. Fails with `usage` and names the ids that exist.
platform::Outcome<Instance> instanceWith(InstanceId id, const Arrangement& arrangement);

/// Returns in a few words what is invalid in an instance; nothing if it is valid.
std::optional<std::string> validate(const Instance& instance);

bool isRenderingMode(std::string_view name);

} // namespace host
