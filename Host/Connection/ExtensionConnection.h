// A conversation with an extension for those who wait for each answer.
//
// Several requests may be under way at once; answers come in any order. Waiting is bounded: an extension that has said
// nothing for as long as `Timeouts` has it while something was asked of it counts as lost. Not for several threads.
#pragma once

#include "Host/Connection/ExtensionChannel.h"
#include "Host/Connection/Timeouts.h"

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace host {

/// Why there is no answer.
struct ConnectionError {
    enum class Kind {
        /// The extension is missing, died, fell silent, or speaks nonsense: it is of no use any more.
        lost,
        /// It refused this request, and goes on.
        refused,
    };
    Kind kind = Kind::lost;
    /// One clear line.
    std::string message;
};

/// `line`, an answer that came, if it has a result; else what it has instead.
platform::Expected<std::string, ConnectionError> answerWithResult(std::string line);

class ExtensionConnection {
  public:
    /// Starts the extension; `home` as in `makeExtensionEnvironment`.
    static platform::Expected<ExtensionConnection, ConnectionError>
    open(const Manifest& manifest, const std::optional<std::filesystem::path>& home, Confined confined = Confined::yes);

    /// Sends a request; `params` is a JSON object. The answer is asked for by the id, once.
    std::int64_t send(std::string_view method, std::string_view params) { return channel_.send(method, params); }

    /// Waits for the answer to `id`: its line, a JSON-RPC message with a result.
    platform::Expected<std::string, ConnectionError> answer(std::int64_t id,
                                                            std::chrono::milliseconds timeout = Timeouts{}.response);

    platform::Expected<std::string, ConnectionError> call(std::string_view method, std::string_view params) {
        return answer(send(method, params));
    }

    const Manifest& manifest() const { return channel_.manifest(); }

  private:
    explicit ExtensionConnection(ExtensionChannel channel) : channel_(std::move(channel)) {}

    /// Waits until something happens.
    void exchange(std::chrono::milliseconds timeout);

    ExtensionChannel channel_;
    std::map<std::int64_t, std::string> answers_;
};

} // namespace host
