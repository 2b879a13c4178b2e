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

/// What is wrong and where, in a few words. Thrown and caught in this file only.
struct Fault {
    std::string reason;
};

/// Returns a name from the file as a JSON string, which has no line breaks.
std::string quoted(std::string_view name) {
    std::string text;
    JsonWriter(text).text(name);
    return text;
}

/// Returns `json` as a value of that type.
template <class Value>
Value read(element json, const char* fault) {
    Value value;
    if (json.get(value) != simdjson::SUCCESS) {
        throw Fault{fault};
    }
    return value;
}

std::string readText(element json) {
    return std::string(read<std::string_view>(json, "not a text"));
}

InstanceId readId(element json, InstanceId max) {
    const auto id = read<std::uint64_t>(json, "not an id");
    if (id == 0 || id > max) {
        throw Fault{"not an id"};
    }
    return static_cast<InstanceId>(id);
}

/// Calls `readMember` with the name and value of each member. Puts the name before the reason of a fault.
template <class ReadMember>
void readMembers(object json, ReadMember readMember) {
    std::set<std::string_view> seen;
    for (const auto& field : json) {
        if (!seen.insert(field.key).second) {
            throw Fault{quoted(field.key) + " is there twice"};
        }
        try {
            readMember(field.key, field.value);
        } catch (const Fault& fault) {
            throw Fault{quoted(field.key) + ": " + fault.reason};
        }
    }
}

Settings readConfiguration(element json) {
    Settings settings;
    readMembers(read<object>(json, "not an object"),
                [&](std::string_view name, element choice) { settings.emplace(name, readText(choice)); });
    return settings;
}

Position readPosition(element json) {
    constexpr const char* fault = "not two numbers";
    const auto numbers = read<array>(json, fault);
    if (numbers.size() != 2) {
        throw Fault{fault};
    }
    return {read<double>(numbers.at(0).value(), fault), read<double>(numbers.at(1).value(), fault)};
}

Instance readInstance(element json) {
    Instance instance;
    readMembers(read<object>(json, "not an object"), [&](std::string_view name, element value) {
        if (name == "id") {
            // The largest id would leave no next one.
            instance.id = readId(value, std::numeric_limits<InstanceId>::max() - 1);
        } else if (name == "extension") {
            instance.extension = readText(value);
        } else if (name == "kind") {
            instance.kind = readText(value);
        } else if (name == "family") {
            instance.family = readText(value);
        } else if (name == "configuration") {
            instance.configuration = readConfiguration(value);
        } else if (name == "output") {
            instance.output = readText(value);
        } else if (name == "position") {
            instance.position = readPosition(value);
        } else {
            instance.unknown.emplace(name, simdjson::minify(value));
        }
    });
    if (instance.id == 0) {
        throw Fault{"without an id"};
    }
    if (const auto fault = validate(instance)) {
        throw Fault{*fault};
    }
    return instance;
}

std::vector<Instance> readInstances(element json) {
    std::vector<Instance> instances;
    std::set<InstanceId> ids;
    for (const element each : read<array>(json, "not a list")) {
        if (instances.size() == Arrangement::maxCount) {
            throw Fault{fmt::format("more than {}", Arrangement::maxCount)};
        }
        try {
            instances.push_back(readInstance(each));
        } catch (const Fault& fault) {
            throw Fault{fmt::format("no. {}: {}", instances.size() + 1, fault.reason)};
        }
        if (!ids.insert(instances.back().id).second) {
            throw Fault{fmt::format("two have the id {}", instances.back().id)};
        }
    }
    return instances;
}

Arrangement readArrangement(object json) {
    Arrangement arrangement;
    readMembers(json, [&](std::string_view name, element value) {
        if (name == "nextId") {
            arrangement.nextId = readId(value, std::numeric_limits<InstanceId>::max());
        } else if (name == "locked") {
            arrangement.locked = read<bool>(value, "not a boolean");
        } else if (name == "renderingMode") {
            // It may be a mode of a later version. The file does not count as broken because of it.
            const std::string mode = readText(value);
            arrangement.renderingMode = isRenderingMode(mode) ? mode : Arrangement::fullColor;
        } else if (name == "instances") {
            arrangement.instances = readInstances(value);
        } else if (name != "version") {
            arrangement.unknown.emplace(name, simdjson::minify(value));
        }
    });
    for (const Instance& instance : arrangement.instances) {
        arrangement.nextId = std::max(arrangement.nextId, instance.id + 1);
    }
    return arrangement;
}

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
    if (json.size() > maxArrangementFileSize) {
        return broken(fmt::format("larger than {} bytes", maxArrangementFileSize));
    }
    simdjson::dom::parser parser;
    object members;
    if (parser.parse(json).get(members) != simdjson::SUCCESS) {
        return broken("not a JSON object");
    }
    // First, because a newer version may have another form.
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
    try {
        return readArrangement(members);
    } catch (const Fault& fault) {
        return broken(fault.reason);
    }
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
