// The protocol's requests for entries.
#pragma once

#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace host {

struct EntryRequest {
    enum class Method { timeline, snapshot, placeholder };
    Method method = Method::timeline;
    std::string kind;
    std::string family = "medium";
    std::string renderingMode = "fullColor";
    /// The choice's id by the parameter's name.
    std::vector<std::pair<std::string, std::string>> configuration;
};

/// Returns the method's name in the protocol.
std::string_view methodName(EntryRequest::Method method);

/// Returns the request's parameters, a JSON object.
std::string paramsOf(const EntryRequest& request);

/// Returns the parameters of another request, by name. Leaves out those without a value.
std::string paramsOf(std::initializer_list<std::pair<std::string_view, std::optional<std::string_view>>> members);

} // namespace host
