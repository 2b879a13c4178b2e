// One message of the host, answered: the extension's end of the protocol without its transport.
//
// Messages are JSON-RPC 2.0, as Documentation/protocol.md has them. Handling never throws, and may happen on several
// threads at once.
#pragma once

#include "Platform/Widgets/WidgetBundle.h"

#include <optional>
#include <string>
#include <string_view>

namespace platform {

class RequestHandler {
  public:
    /// `bundle` must outlive the handler.
    explicit RequestHandler(const WidgetBundle& bundle) : bundle_(bundle) {}

    /// The answer to one line, a message without the line's end; nothing for a notification, which has none.
    std::optional<std::string> answer(std::string_view line) const;

    /// The answer to a line that was too long to be read.
    static std::string answerToTooLongLine();

  private:
    const WidgetBundle& bundle_;
};

} // namespace platform
