#include "Host/Arrangement/Arrangement.h"

#include <fmt/format.h>
#include <simdjson.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace host {
namespace {

constexpr std::array<const char*, 3> renderingModes{Arrangement::fullColor, "tinted", "vibrant"};

/// Why a change was not made; nothing if it was.
using Refusal = std::optional<std::string>;

platform::Unexpected<platform::Failure> invalid(std::string message) {
    return {{platform::Failure::Kind::usage, std::move(message)}};
}

bool isUtf8(const std::string& text) {
    return simdjson::validate_utf8(text);
}

bool isWithinLimit(const Position& position) {
    // False for NaN, too.
    return std::fabs(position.x) <= Position::limit && std::fabs(position.y) <= Position::limit;
}

std::string unknownId(InstanceId id, const Arrangement& arrangement) {
    if (arrangement.instances.empty()) {
        return fmt::format("there is no widget {}; no widget is placed", id);
    }
    std::vector<InstanceId> ids;
    for (const Instance& instance : arrangement.instances) {
        ids.push_back(instance.id);
    }
    return fmt::format("there is no widget {}; there are {}", id, fmt::join(ids, ", "));
}

auto locate(InstanceId id, const Arrangement& arrangement) {
    return std::find_if(arrangement.instances.begin(), arrangement.instances.end(),
                        [&](const Instance& instance) { return instance.id == id; });
}

/// Applies a change to an arrangement.
class ChangeVisitor {
  public:
    explicit ChangeVisitor(Arrangement& arrangement) : arrangement_(arrangement) {}

    Refusal operator()(const Addition& addition) {
        if (arrangement_.nextId == std::numeric_limits<InstanceId>::max()) {
            return "all ids are used up; only a new arrangement starts at 1 again";
        }
        return insert(addition.instance, arrangement_.nextId++);
    }

    Refusal operator()(const Restoration& restoration) {
        const InstanceId id = restoration.instance.id;
        if (id == 0 || id >= arrangement_.nextId || locate(id, arrangement_) != arrangement_.instances.end()) {
            return fmt::format("there is no removed widget {}", id);
        }
        return insert(restoration.instance, id);
    }

    Refusal operator()(const Removal& removal) {
        const auto found = locate(removal.id, arrangement_);
        if (found == arrangement_.instances.end()) {
            return unknownId(removal.id, arrangement_);
        }
        arrangement_.instances.erase(found);
        return std::nullopt;
    }

    Refusal operator()(const Edit& edit) {
        return alter(edit.id, [&](Instance& instance) {
            for (const auto& [name, choice] : edit.settings) {
                instance.configuration.insert_or_assign(name, choice);
            }
        });
    }

    Refusal operator()(const Move& move) {
        return alter(move.id, [&](Instance& instance) {
            instance.position = move.position;
            if (move.output) {
                instance.output = move.output;
            }
        });
    }

    Refusal operator()(const Resizing& resizing) {
        return alter(resizing.id, [&](Instance& instance) { instance.family = resizing.family; });
    }

    Refusal operator()(const Locking& locking) {
        arrangement_.locked = locking.locked;
        return std::nullopt;
    }

    Refusal operator()(const SetRenderingMode& mode) {
        if (!isRenderingMode(mode.renderingMode)) {
            return fmt::format("there is no mode \"{}\"; there are {}", mode.renderingMode,
                               fmt::join(renderingModes, ", "));
        }
        arrangement_.renderingMode = mode.renderingMode;
        return std::nullopt;
    }

  private:
    Refusal insert(const Instance& instance, InstanceId id) {
        if (arrangement_.instances.size() >= Arrangement::maxCount) {
            return fmt::format("there are {} widgets already, which is the maximum", Arrangement::maxCount);
        }
        if (auto fault = validate(instance)) {
            return fault;
        }
        arrangement_.instances.push_back(instance);
        arrangement_.instances.back().id = id;
        return std::nullopt;
    }

    template <class Alteration>
    Refusal alter(InstanceId id, Alteration alteration) {
        const auto found = locate(id, arrangement_);
        if (found == arrangement_.instances.end()) {
            return unknownId(id, arrangement_);
        }
        Instance& instance = arrangement_.instances[static_cast<std::size_t>(found - arrangement_.instances.begin())];
        alteration(instance);
        return validate(instance);
    }

    Arrangement& arrangement_;
};

} // namespace

platform::Outcome<Arrangement> applied(Arrangement arrangement, const ArrangementChange& change) {
    if (auto refusal = std::visit(ChangeVisitor(arrangement), change)) {
        return invalid(*std::move(refusal));
    }
    return arrangement;
}

platform::Outcome<Instance> instanceWith(InstanceId id, const Arrangement& arrangement) {
    const auto found = locate(id, arrangement);
    if (found == arrangement.instances.end()) {
        return invalid(unknownId(id, arrangement));
    }
    return *found;
}

bool isRenderingMode(std::string_view name) {
    return std::find(renderingModes.begin(), renderingModes.end(), name) != renderingModes.end();
}

std::optional<std::string> validate(const Instance& instance) {
    if (instance.extension.empty() || instance.kind.empty() || instance.family.empty()) {
        return "extension, kind or family is missing";
    }
    if (!isUtf8(instance.extension) || !isUtf8(instance.kind) || !isUtf8(instance.family)) {
        return "the name of the extension, the kind or the family is not UTF-8";
    }
    for (const auto& [name, choice] : instance.configuration) {
        if (!isUtf8(name) || !isUtf8(choice)) {
            return "a setting is not UTF-8";
        }
    }
    if (instance.output && (instance.output->empty() || !isUtf8(*instance.output))) {
        return "the name of the output is empty or not UTF-8";
    }
    if (instance.position && !isWithinLimit(*instance.position)) {
        return fmt::format("the position is not within ±{}", Position::limit);
    }
    return std::nullopt;
}

} // namespace host
