// One message of the host, answered: the extension's end of the protocol without its transport.
//
// Messages are JSON-RPC 2.0, as Documentation/protocol.md has them. Handling never throws.
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

    using Reply = std::function<void(std::string answer)>;

    /// Calls `reply` once with the answer to one line, a message without the line's end: at once, or for a timeline
    /// that takes its time later, on another thread. Not for a notification, which has no answer.
    void answer(std::string_view line, const Reply& reply) const;

    /// The answer to a line that was too long to be read.
    static std::string answerToTooLongLine();

  private:
    const WidgetBundle& bundle_;
};

} // namespace platform
