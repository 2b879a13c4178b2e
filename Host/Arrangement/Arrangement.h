// The arrangement: which widgets are placed on the desktop, with their sizes, settings and positions.
//
// It and changes to it are values. Any thread.
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

/// 1, 2, … in the order of addition. Never reused in one file.
using InstanceId = std::uint32_t;

/// The upper left corner, in points from the output's, or from the whole desktop's if no output is named.
struct Position {
    /// The largest absolute value of either coordinate.
    static constexpr double limit = 100'000;
    double x = 0;
    double y = 0;
    bool operator==(const Position&) const = default;
};

/// Ids of choices by parameter name. A missing parameter has its default.
using Settings = std::map<std::string, std::string>;

/// Members of the file that this version does not know, as JSON by name. They are written back where they were read.
using UnknownMembers = std::map<std::string, std::string>;

/// A placed widget. All text is UTF-8; extension, kind and family are not empty.
struct Instance {
    InstanceId id = 0;
    /// The identifier of the extension that has the widget.
    std::string extension;
    std::string kind;
    std::string family;
    Settings configuration;
    /// Name of the screen; without one, the host chooses.
    std::optional<std::string> output;
    /// Without one, the host finds a free place.
    std::optional<Position> position;
    UnknownMembers unknown;
    bool operator==(const Instance&) const = default;
};

struct Arrangement {
    static constexpr std::size_t maxCount = 1000;
    /// In the order of addition, with unique ids.
    std::vector<Instance> instances;
    /// Greater than every id given so far.
    InstanceId nextId = 1;
    /// Tiles cannot be dragged.
    bool locked = false;
    /// "fullColor", "tinted" or "vibrant", for all tiles.
    std::string renderingMode = fullColor;
    UnknownMembers unknown;
    bool operator==(const Arrangement&) const = default;

    static constexpr const char* fullColor = "fullColor";
};

/// Adds `instance` at the end, with a new id.
struct Addition {
    Instance instance;
};
struct Removal {
    InstanceId id = 0;
};
/// Restores a removed instance with the id it had.
struct Restoration {
    Instance instance;
};
/// Replaces the settings that are named and keeps the others.
struct Edit {
    InstanceId id = 0;
    Settings settings;
};
/// Without an output, the instance stays on its present one.
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

/// Returns in a few words what is invalid, or nothing.
std::optional<std::string> validate(const Instance& instance);

bool isRenderingMode(std::string_view name);

} // namespace host
