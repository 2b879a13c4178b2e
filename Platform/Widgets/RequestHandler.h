// Responds to the host's messages: the extension's end of the protocol without its transport.
//
// Messages are JSON-RPC 2.0, see Documentation/protocol.md. Never throws.
#pragma once

#include "Platform/Widgets/WidgetBundle.h"

#include <functional>
#include <string>
#include <string_view>

namespace platform {

class RequestHandler {
  public:
    /// `bundle` must outlive the handler.
    explicit RequestHandler(const WidgetBundle& bundle) : bundle_(bundle) {}

    using Reply = std::function<void(std::string response)>;

    /// Calls `reply` once with the response to `line`, a message without the line's end: before it returns, or for a
    /// timeline that must wait, later on another thread. Does not call it for a notification.
    void handle(std::string_view line, const Reply& reply) const;

    /// Returns the response to a line that is too long.
    static std::string responseToTooLongLine();

  private:
    const WidgetBundle& bundle_;
};

} // namespace platform
