// How long a host waits for an extension.
#pragma once

#include <chrono>
#include <optional>

namespace host {

struct Timeouts {
    /// For anything to come while an answer is due. Must exceed the 90 s that an extension may take for a download in
    /// all: in a network that swallows everything it answers only then, with what it has kept.
    std::chrono::milliseconds response{120'000};
    /// For the next request, after the last answer; nothing: for ever.
    std::optional<std::chrono::milliseconds> idle{5'000};
    /// For the process to exit, once its input or its output is closed.
    std::chrono::milliseconds shutdown{500};
};

} // namespace host
