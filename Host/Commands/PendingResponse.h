// Sends a request and waits for its response, for a command that does nothing else meanwhile.
#pragma once

#include "Host/Connection/ExtensionClient.h"

namespace host {

template <class Value>
class PendingResponse {
  public:
    /// Sends the request. `read` makes the value of the result.
    PendingResponse(ExtensionClient& client, std::string_view method, std::string_view params,
                    std::function<platform::Outcome<Value>(simdjson::dom::element result)> read) {
        client.send(
            method, params, [response = response_, read = std::move(read)](const ExtensionClient::Result& result) {
                *response = result ? read(*result) : platform::Outcome<Value>(platform::Unexpected{result.error()});
            });
    }

    /// Runs the main loop until the response arrives. Requires that the client still exists.
    const platform::Outcome<Value>& wait() const {
        while (!*response_) {
            g_main_context_iteration(nullptr, TRUE);
        }
        return **response_;
    }

  private:
    std::shared_ptr<std::optional<platform::Outcome<Value>>> response_ =
        std::make_shared<std::optional<platform::Outcome<Value>>>();
};

template <class Value>
PendingResponse(ExtensionClient&, std::string_view, std::string_view,
                platform::Outcome<Value> (*)(simdjson::dom::element)) -> PendingResponse<Value>;

} // namespace host
