#include "Host/Connection/Requests.h"

#include "Platform/Foundation/JsonWriter.h"

namespace host {

std::string_view methodName(EntryRequest::Method method) {
    switch (method) {
    case EntryRequest::Method::snapshot:
        return "snapshot";
    case EntryRequest::Method::placeholder:
        return "placeholder";
    case EntryRequest::Method::timeline:
        break;
    }
    return "timeline";
}

std::string paramsOf(const EntryRequest& request) {
    std::string params;
    platform::JsonWriter out(params);
    out.beginObject().member("kind", request.kind);
    if (request.method != EntryRequest::Method::placeholder) {
        out.key("configuration").beginObject();
        for (const auto& [name, id] : request.configuration) {
            out.textKey(name).text(id);
        }
        out.endObject();
    }
    out.key("environment").beginObject().member("family", request.family);
    out.member("renderingMode", request.renderingMode).endObject().endObject();
    return params;
}

std::string paramsOf(std::initializer_list<std::pair<std::string_view, std::optional<std::string_view>>> members) {
    std::string params;
    platform::JsonWriter out(params);
    out.beginObject();
    for (const auto& [name, value] : members) {
        if (value) {
            out.textKey(name).text(*value);
        }
    }
    out.endObject();
    return params;
}

} // namespace host
