#include "Platform/Widgets/RequestHandler.h"

#include "Platform/Foundation/JsonTree.h"
#include "Platform/Foundation/JsonWriter.h"
#include "Platform/Views/ViewWriter.h"

#include <algorithm>
#include <exception>

namespace platform {
namespace {

using Json = nlohmann::json;

constexpr int maxDepth = 64;

/// The size of a list with icons.
constexpr std::size_t typicalResponseSize = std::size_t{48} << 10U;

enum class ErrorCode {
    notJson = -32700,
    notRequest = -32600,
    noMethod = -32601,
    invalidParameter = -32602,
    internal = -32603
};

/// Ends the handling of a request. Thrown and caught in this file only.
struct RequestError {
    ErrorCode code;
    std::string message;
};

[[noreturn]] void refuse(ErrorCode code, std::string message) {
    throw RequestError{code, std::move(message)};
}
[[noreturn]] void refuseParameter(std::string message) {
    refuse(ErrorCode::invalidParameter, std::move(message));
}

const Json& parameter(const Json& params, const char* name, Json::value_t type, const char* accepted) {
    const auto found = params.find(name);
    if (found == params.end()) {
        refuseParameter(std::string("\"") + name + "\" is missing; " + (type == Json::value_t::object ? "an " : "a ") +
                        accepted + " is accepted");
    }
    if (found->type() != type) {
        refuseParameter(std::string("\"") + name + "\" is no " + accepted);
    }
    return *found;
}

const std::string& textParameter(const Json& params, const char* name) {
    return parameter(params, name, Json::value_t::string, "text").get_ref<const std::string&>();
}

const Json& objectParameter(const Json& params, const char* name) {
    return parameter(params, name, Json::value_t::object, "object");
}

Environment environmentParameter(const Json& params) {
    const Json& object = objectParameter(params, "environment");
    Environment environment{.family = familyNamed(textParameter(object, "family"))};
    if (object.contains("renderingMode")) {
        environment.renderingMode = renderingModeNamed(textParameter(object, "renderingMode"));
    }
    return environment;
}

Configuration configurationParameter(const Json& params) {
    Configuration configuration;
    for (const auto& [name, value] : objectParameter(params, "configuration").items()) {
        if (!value.is_string()) {
            refuseParameter("the choice of \"" + name + "\" is no text");
        }
        configuration.emplace(name, value.get_ref<const std::string&>());
    }
    return configuration;
}

ChoiceRequest choiceRequestParameter(const Json& params) {
    ChoiceRequest request;
    if (params.contains("matching")) {
        request.matching = textParameter(params, "matching");
    }
    if (const auto found = params.find("identifiers"); found != params.end()) {
        if (request.matching) {
            refuseParameter("of \"matching\" and \"identifiers\", one at most is accepted");
        }
        if (!found->is_array()) {
            refuseParameter("\"identifiers\" is no list of texts");
        }
        request.identifiers.emplace();
        for (const Json& identifier : *found) {
            if (!identifier.is_string()) {
                refuseParameter("\"identifiers\" is no list of texts");
            }
            request.identifiers->push_back(identifier.get_ref<const std::string&>());
        }
    }
    return request;
}

void writeChoice(JsonWriter& out, const Choice& choice) {
    out.beginObject().member("id", choice.id).member("title", choice.title).endObject();
}

void writeChoices(JsonWriter& out, const std::vector<Choice>& choices) {
    out.beginArray();
    for (const Choice& choice : choices) {
        writeChoice(out, choice);
    }
    out.endArray();
}

void writeEntry(JsonWriter& out, const EntryContent& entry) {
    out.beginObject().member("date", toRfc3339(entry.date)).key("content").beginObject().key("view");
    writeView(out, entry.view);
    out.member("containerBackground", entry.containerBackground);
    if (entry.widgetURL) {
        out.member("widgetURL", *entry.widgetURL);
    }
    out.endObject().endObject();
}

void writeEntries(JsonWriter& out, const std::vector<EntryContent>& entries) {
    out.key("entries").beginArray();
    for (const EntryContent& entry : entries) {
        writeEntry(out, entry);
    }
    out.endArray();
}

void writeParameter(JsonWriter& out, const ParameterDescription& parameter) {
    const bool isEnumeration = parameter.type == ParameterType::enumeration;
    out.beginObject().member("name", parameter.name).member("title", parameter.title);
    out.member("type", isEnumeration ? "enumeration" : "entity").member("typeName", parameter.typeName);
    out.member("default", parameter.defaultChoice.id);
    if (isEnumeration) {
        out.key("cases");
        writeChoices(out, parameter.cases);
    }
    out.endObject();
}

void writeDescription(JsonWriter& out, const WidgetDescription& widget) {
    out.beginObject().member("kind", widget.kind).member("displayName", widget.displayName);
    out.member("description", widget.description).key("families").beginArray();
    for (const WidgetFamily family : widget.families) {
        out.text(familyName(family));
    }
    out.endArray().member("containerBackground", widget.containerBackground).key("configuration").beginObject();
    out.member("title", widget.displayName).member("description", widget.description);
    out.key("parameters").beginArray();
    for (const ParameterDescription& parameter : widget.parameters) {
        writeParameter(out, parameter);
    }
    out.endArray().endObject().endObject();
}

/// Returns the value, or throws the error.
template <class Result>
Result valueOf(Expected<Result, InvalidChoice> result) {
    if (!result) {
        refuseParameter(result.error().message);
    }
    return *std::move(result);
}

const Widget& widgetParameter(const WidgetBundle& bundle, const Json& params) {
    const std::string& kind = textParameter(params, "kind");
    std::vector<std::string> kinds;
    for (const auto& widget : bundle.widgets) {
        if (widget->kind() == kind) {
            return *widget;
        }
        kinds.push_back(widget->kind());
    }
    refuseParameter(notAccepted("kind", kind, kinds));
}

void writeTimeline(JsonWriter& out, const Timeline<EntryContent>& timeline) {
    out.beginObject();
    writeEntries(out, timeline.entries);
    out.key("reload").beginObject().member("policy", "after").member("date", toRfc3339(timeline.reload.date));
    out.endObject();
    if (!timeline.watches.empty()) {
        out.key("watches").beginArray();
        for (const std::string& path : timeline.watches) {
            out.text(path);
        }
        out.endArray();
    }
    out.endObject();
}

/// The methods of the protocol except `timeline`. Each writes its result.
class Methods {
  public:
    Methods(const WidgetBundle& bundle, const Json& params, JsonWriter& out)
        : bundle_(bundle), params_(params), out_(out) {}

    void call(std::string_view method) const {
        if (method == "describe") {
            describe();
        } else if (method == "placeholder") {
            writeEntry(out_, widget().placeholder(environmentParameter(params_)));
        } else if (method == "snapshot") {
            const Widget& target = widget();
            const Configuration configuration = configurationParameter(params_);
            writeEntry(out_, valueOf(target.snapshot(configuration, environmentParameter(params_))));
        } else if (method == "options") {
            options();
        } else if (method == "previews") {
            previews();
        } else if (method == "preview") {
            preview();
        } else {
            refuse(ErrorCode::noMethod, "no method \"" + std::string(method) + "\"");
        }
    }

  private:
    const Widget& widget() const { return widgetParameter(bundle_, params_); }

    void describe() const {
        out_.beginObject().member("identifier", bundle_.identifier).key("widgets").beginArray();
        for (const auto& widget : bundle_.widgets) {
            writeDescription(out_, widget->description());
        }
        out_.endArray().endObject();
    }

    void options() const {
        const Widget& target = widget();
        const std::string& name = textParameter(params_, "parameter");
        const auto parameters = target.description().parameters;
        const auto parameter = std::find_if(parameters.begin(), parameters.end(),
                                            [&](const ParameterDescription& known) { return known.name == name; });
        if (parameter == parameters.end()) {
            refuseParameter(notAccepted("parameter", name, parameterNames(parameters)));
        }
        out_.beginObject().key("options");
        writeChoices(out_, target.choices(name, choiceRequestParameter(params_)));
        out_.key("default");
        writeChoice(out_, parameter->defaultChoice);
        out_.endObject();
    }

    void previews() const {
        out_.beginObject().key("previews").beginArray();
        for (const auto& widget : bundle_.widgets) {
            for (const PreviewDescription& preview : widget->previews()) {
                out_.beginObject().member("kind", widget->kind()).member("name", preview.name);
                out_.member("family", familyName(preview.family)).endObject();
            }
        }
        out_.endArray().endObject();
    }

    void preview() const {
        const Widget& target = widget();
        const std::string& name = textParameter(params_, "name");
        std::vector<std::string> names;
        for (const PreviewDescription& preview : target.previews()) {
            if (preview.name == name) {
                out_.beginObject();
                writeEntries(out_, target.preview(names.size()));
                out_.endObject();
                return;
            }
            names.push_back(preview.name);
        }
        refuseParameter(notAccepted("preview", name, names));
    }

    const WidgetBundle& bundle_;
    const Json& params_;
    JsonWriter& out_;
};

/// A request's id as JSON, repeated in the response.
using Id = std::string;
constexpr const char* noId = "null";

std::string errorResponse(const Id& id, ErrorCode code, std::string_view message) {
    std::string response;
    JsonWriter out(response);
    out.beginObject().member("jsonrpc", "2.0").key("id").raw(id).key("error").beginObject();
    out.key("code").number(static_cast<int>(code)).member("message", message).endObject().endObject();
    return response;
}

/// Returns the error that `work` throws.
template <class Work>
std::optional<std::string> errorOf(const Id& id, Work work) {
    try {
        work();
        return std::nullopt;
    } catch (const RequestError& error) {
        return errorResponse(id, error.code, error.message);
    } catch (const std::exception& error) {
        return errorResponse(id, ErrorCode::internal, error.what());
    }
}

/// Returns the response with the result that `writeResult` writes, or with the error that it throws.
template <class WriteResult>
std::string responseWith(const Id& id, WriteResult writeResult) {
    std::string response;
    auto error = errorOf(id, [&] {
        response.reserve(typicalResponseSize);
        JsonWriter out(response);
        out.beginObject().member("jsonrpc", "2.0");
        out.key("id").raw(id).key("result");
        writeResult(out);
        out.endObject();
    });
    return error ? *std::move(error) : response;
}

void handleTimeline(const WidgetBundle& bundle, const Json& params, const Id& id, const RequestHandler::Reply& reply) {
    const auto error = errorOf(id, [&] {
        const Widget& target = widgetParameter(bundle, params);
        const Configuration configuration = configurationParameter(params);
        target.timeline(configuration, environmentParameter(params), [id, reply](auto timeline) {
            reply(responseWith(id, [&](JsonWriter& out) { writeTimeline(out, valueOf(std::move(timeline))); }));
        });
    });
    if (error) {
        reply(*error);
    }
}

/// Returns the id of a request, `noId` for a notification; nothing for an id of another type.
std::optional<Id> idOf(const Json& request) {
    const auto id = request.find("id");
    if (id == request.end()) {
        return noId;
    }
    return id->is_string() || id->is_number_integer() ? std::optional(id->dump()) : std::nullopt;
}

/// Parses a line. Returns a discarded value if it is not JSON or too deep. Sets `tooDeep`.
Json parse(std::string_view line, bool& tooDeep) {
    const auto watchDepth = [&tooDeep](int depth, Json::parse_event_t event, Json&) {
        const bool opens = event == Json::parse_event_t::object_start || event == Json::parse_event_t::array_start;
        tooDeep = tooDeep || (opens && depth > maxDepth);
        return !(opens && depth > maxDepth);
    };
    return parsedJson(line, watchDepth);
}

void handleRequest(const WidgetBundle& bundle, const Json& request, const RequestHandler::Reply& reply) {
    const std::optional<Id> id = idOf(request);
    if (!id) {
        return reply(errorResponse(noId, ErrorCode::notRequest, "\"id\" is neither an integer nor a text"));
    }
    const auto version = request.find("jsonrpc");
    if (version == request.end() || *version != "2.0") {
        return reply(errorResponse(*id, ErrorCode::notRequest, "\"jsonrpc\" is not \"2.0\""));
    }
    const auto member = request.find("method");
    if (member == request.end() || !member->is_string()) {
        return reply(errorResponse(*id, ErrorCode::notRequest, "\"method\" is no text"));
    }
    if (*id == noId) {
        return;
    }
    static const Json none = Json::object();
    const auto given = request.find("params");
    const Json& params = given == request.end() ? none : *given;
    if (!params.is_object()) {
        return reply(errorResponse(*id, ErrorCode::invalidParameter, "\"params\" is no object"));
    }
    const auto& method = member->get_ref<const std::string&>();
    if (method == "timeline") {
        return handleTimeline(bundle, params, *id, reply);
    }
    reply(responseWith(*id, [&](JsonWriter& out) { Methods(bundle, params, out).call(method); }));
}

} // namespace

void RequestHandler::handle(std::string_view line, const Reply& reply) const {
    bool tooDeep = false;
    const Json request = parse(line, tooDeep);
    if (request.is_discarded() && !tooDeep) {
        return reply(errorResponse(noId, ErrorCode::notJson, "the line is not JSON"));
    }
    if (tooDeep || !request.is_object()) {
        return reply(errorResponse(noId, ErrorCode::notRequest, "the line is no request object"));
    }
    handleRequest(bundle_, request, reply);
}

std::string RequestHandler::responseToTooLongLine() {
    return errorResponse(noId, ErrorCode::notRequest, "the line is longer than 1 MiB");
}

} // namespace platform
