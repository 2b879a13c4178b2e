// How long a host waits for an extension.
#pragma once

#include <chrono>
#include <optional>

namespace host {

struct Timeouts {
    /// Without any output while a response is awaited. Must exceed the 90 s of an extension's longest download, after
    /// which it responds with what it has cached.
    std::chrono::milliseconds response{120'000};
    /// Without a request after the last response; nothing: no timeout.
    std::optional<std::chrono::milliseconds> idle{5'000};
    /// From the end of the process's input or output to its exit.
    std::chrono::milliseconds shutdown{500};
};

} // namespace host
