// The host's end of the protocol: requests out, answers in, by their ids.
//
// Several requests may be under way at once; answers come in any order. Waiting is bounded: an extension that has said
// nothing for `silenceSeconds` while something was asked of it counts as lost. Not for several threads.
#pragma once

#include "Host/Connection/ExtensionProcess.h"
#include "Host/Connection/Manifest.h"
#include "Platform/Foundation/Expected.h"

#include <cstddef>
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

class ExtensionConnection {
  public:
    static constexpr int silenceSeconds = 60;
    static constexpr std::size_t greatestAnswer = std::size_t{8} << 20U;

    /// Starts the extension; `home` as in `makeExtensionEnvironment`.
    static platform::Expected<ExtensionConnection, ConnectionError>
    open(const Manifest& manifest, const std::optional<std::filesystem::path>& home);

    /// Sends a request; `params` is a JSON object. The answer is asked for by the id, once.
    std::int64_t send(std::string_view method, std::string_view params);

    /// Waits for the answer to `id`: its line, a JSON-RPC message with a result.
    platform::Expected<std::string, ConnectionError> answer(std::int64_t id);

    platform::Expected<std::string, ConnectionError> call(std::string_view method, std::string_view params) {
        return answer(send(method, params));
    }

    const Manifest& manifest() const { return manifest_; }

  private:
    ExtensionConnection(Manifest manifest, ExtensionProcess process)
        : manifest_(std::move(manifest)), process_(std::move(process)) {}

    /// Moves what can be moved either way, waiting for something to happen; false when the connection is lost.
    bool exchange();
    bool readAnswers();
    void takeAnswer(std::string_view line);
    void lose(std::string_view why);

    Manifest manifest_;
    ExtensionProcess process_;
    std::int64_t lastId_ = 0;
    std::string outgoing_;
    std::string incoming_;
    std::string lastWords_;
    std::map<std::int64_t, std::string> answers_;
    std::optional<std::string> lost_;
};

} // namespace host
