#include "Host/Arrangement/ArrangementJson.h"

#include "Platform/Foundation/JsonWriter.h"

#include <fmt/format.h>
#include <simdjson.h>

#include <algorithm>
#include <limits>
#include <optional>
#include <set>

namespace host {
namespace {

using platform::Failure;
using platform::JsonWriter;
using platform::Unexpected;
using simdjson::dom::array;
using simdjson::dom::element;
using simdjson::dom::object;

/// Why something cannot be read, in a few words; nothing where it was.
using Fault = std::optional<std::string>;

/// A name from the file, in quotes and on one line whatever it is.
std::string quoted(std::string_view name) {
    std::string text;
    JsonWriter(text).text(name);
    return text;
}

/// How the member with a name is read into its place.
template <class Target>
struct Member {
    std::string_view name;
    Fault (*read)(element value, Target& target);
};

/// Reads the members of an object, each at most once. Those without a row are kept as they are.
template <class Target, std::size_t Count>
Fault readMembers(object json, const std::array<Member<Target>, Count>& members, Target& target) {
    std::set<std::string_view> seen;
    for (const auto& field : json) {
        if (!seen.insert(field.key).second) {
            return quoted(field.key) + " is there twice";
        }
        const auto member = std::find_if(members.begin(), members.end(),
                                         [&](const Member<Target>& each) { return each.name == field.key; });
        if (member == members.end()) {
            target.unknown.emplace(field.key, simdjson::minify(field.value));
        } else if (const Fault fault = member->read(field.value, target)) {
            return quoted(field.key) + ": " + *fault;
        }
    }
    return std::nullopt;
}

Fault readText(element value, std::string& text) {
    std::string_view view;
    if (value.get(view) != simdjson::SUCCESS) {
        return "not a text";
    }
    text = view;
    return std::nullopt;
}

template <std::string Instance::*Text>
Fault readTextMember(element value, Instance& instance) {
    return readText(value, instance.*Text);
}

Fault readId(element value, InstanceId& id) {
    std::uint64_t number = 0;
    if (value.get(number) != simdjson::SUCCESS || number == 0 || number > std::numeric_limits<InstanceId>::max()) {
        return "not an id";
    }
    id = static_cast<InstanceId>(number);
    return std::nullopt;
}

Fault readInstanceId(element value, Instance& instance) {
    const Fault fault = readId(value, instance.id);
    // There would be none to follow it.
    return instance.id == std::numeric_limits<InstanceId>::max() ? Fault("not an id") : fault;
}

Fault readConfiguration(element value, Instance& instance) {
    object settings;
    if (value.get(settings) != simdjson::SUCCESS) {
        return "not an object";
    }
    for (const auto& field : settings) {
        std::string choice;
        if (const Fault fault = readText(field.value, choice)) {
            return quoted(field.key) + ": " + *fault;
        }
        if (!instance.configuration.emplace(field.key, std::move(choice)).second) {
            return quoted(field.key) + " is there twice";
        }
    }
    return std::nullopt;
}

Fault readOutput(element value, Instance& instance) {
    return readText(value, instance.output.emplace());
}

Fault readPosition(element value, Instance& instance) {
    array numbers;
    Position position;
    if (value.get(numbers) != simdjson::SUCCESS || numbers.size() != 2 ||
        numbers.at(0).get(position.x) != simdjson::SUCCESS || numbers.at(1).get(position.y) != simdjson::SUCCESS) {
        return "not two numbers";
    }
    instance.position = position;
    return std::nullopt;
}

constexpr std::array<Member<Instance>, 7> instanceMembers{{{"id", readInstanceId},
                                                           {"extension", readTextMember<&Instance::extension>},
                                                           {"kind", readTextMember<&Instance::kind>},
                                                           {"family", readTextMember<&Instance::family>},
                                                           {"configuration", readConfiguration},
                                                           {"output", readOutput},
                                                           {"position", readPosition}}};

Fault readInstance(element value, Instance& instance) {
    object json;
    if (value.get(json) != simdjson::SUCCESS) {
        return "not an object";
    }
    if (Fault fault = readMembers(json, instanceMembers, instance)) {
        return fault;
    }
    return instance.id == 0 ? Fault("without an id") : faultOf(instance);
}

Fault readInstances(element value, Arrangement& arrangement) {
    array list;
    if (value.get(list) != simdjson::SUCCESS) {
        return "not a list";
    }
    std::set<InstanceId> ids;
    for (const element each : list) {
        if (arrangement.instances.size() == Arrangement::greatestCount) {
            return fmt::format("more than {}", Arrangement::greatestCount);
        }
        Instance& instance = arrangement.instances.emplace_back();
        if (const Fault fault = readInstance(each, instance)) {
            return fmt::format("no. {}: {}", arrangement.instances.size(), *fault);
        }
        if (!ids.insert(instance.id).second) {
            return fmt::format("two have the id {}", instance.id);
        }
    }
    return std::nullopt;
}

Fault readLocked(element value, Arrangement& arrangement) {
    return value.get(arrangement.locked) == simdjson::SUCCESS ? std::nullopt : Fault("not a boolean");
}

/// A mode that a later version has is no reason to lose the tiles.
Fault readRenderingMode(element value, Arrangement& arrangement) {
    std::string mode;
    if (Fault fault = readText(value, mode)) {
        return fault;
    }
    arrangement.renderingMode = isRenderingMode(mode) ? mode : Arrangement::fullColor;
    return std::nullopt;
}

constexpr std::array<Member<Arrangement>, 5> arrangementMembers{
    {{"version", [](element, Arrangement&) -> Fault { return std::nullopt; }},
     {"nextId", [](element value, Arrangement& arrangement) { return readId(value, arrangement.nextId); }},
     {"locked", readLocked},
     {"renderingMode", readRenderingMode},
     {"instances", readInstances}}};

Unexpected<Failure> broken(std::string reason) {
    return {{Failure::Kind::malformed, std::move(reason)}};
}

void writeUnknown(JsonWriter& out, const UnknownMembers& members) {
    for (const auto& [name, json] : members) {
        out.textKey(name).raw(json);
    }
}

void writeInstance(JsonWriter& out, const Instance& instance) {
    out.beginObject().key("id").number(instance.id).member("extension", instance.extension);
    out.member("kind", instance.kind).member("family", instance.family);
    if (!instance.configuration.empty()) {
        out.key("configuration").beginObject();
        for (const auto& [name, choice] : instance.configuration) {
            out.textKey(name).text(choice);
        }
        out.endObject();
    }
    if (instance.output) {
        out.member("output", *instance.output);
    }
    if (instance.position) {
        out.key("position").beginArray().number(instance.position->x).number(instance.position->y).endArray();
    }
    writeUnknown(out, instance.unknown);
    out.endObject();
}

} // namespace

platform::Outcome<Arrangement> arrangementFromJson(std::string_view json) {
    if (json.size() > greatestArrangementFile) {
        return broken(fmt::format("larger than {} bytes", greatestArrangementFile));
    }
    simdjson::dom::parser parser;
    object members;
    if (parser.parse(json).get(members) != simdjson::SUCCESS) {
        return broken("not a JSON object");
    }
    // Before anything else: a newer form may look like nothing that is known here.
    std::uint64_t version = 0;
    if (members["version"].get(version) != simdjson::SUCCESS || version == 0) {
        return broken("\"version\": missing or not a version");
    }
    if (version > arrangementVersion) {
        return Unexpected{Failure{Failure::Kind::unreadable, fmt::format("version {}", version)}};
    }
    if (members["instances"].error() != simdjson::SUCCESS) {
        return broken("\"instances\": missing");
    }
    Arrangement arrangement;
    if (const Fault fault = readMembers(members, arrangementMembers, arrangement)) {
        return broken(*fault);
    }
    for (const Instance& instance : arrangement.instances) {
        arrangement.nextId = std::max(arrangement.nextId, instance.id + 1);
    }
    return arrangement;
}

std::string arrangementJson(const Arrangement& arrangement) {
    std::string text;
    JsonWriter out(text);
    out.beginObject().key("version").number(arrangementVersion).key("nextId").number(arrangement.nextId);
    if (arrangement.locked) {
        out.key("locked").raw("true");
    }
    if (arrangement.renderingMode != Arrangement::fullColor) {
        out.member("renderingMode", arrangement.renderingMode);
    }
    writeUnknown(out, arrangement.unknown);
    out.key("instances").beginArray();
    for (const Instance& instance : arrangement.instances) {
        std::string line = "\n";
        JsonWriter lineOut(line);
        writeInstance(lineOut, instance);
        out.raw(line);
    }
    text += '\n';
    out.endArray().endObject();
    text += '\n';
    return text;
}

std::string instancesJson(const Arrangement& arrangement) {
    std::string text;
    JsonWriter out(text);
    out.beginArray();
    for (const Instance& instance : arrangement.instances) {
        writeInstance(out, instance);
    }
    out.endArray();
    return text;
}

} // namespace host
