#include "Host/Connection/ExtensionConnection.h"

#include <simdjson.h>

namespace host {

using platform::Unexpected;

platform::Expected<std::string, ConnectionError> answerWithResult(std::string line) {
    simdjson::dom::parser parser;
    simdjson::dom::element message;
    simdjson::dom::element result;
    if (parser.parse(line).get(message) == simdjson::SUCCESS && message["result"].get(result) == simdjson::SUCCESS) {
        return line;
    }
    std::string_view reason = "an answer with neither result nor error";
    const bool refused = message["error"]["message"].get(reason) == simdjson::SUCCESS;
    return Unexpected{ConnectionError{.kind = refused ? ConnectionError::Kind::refused : ConnectionError::Kind::lost,
                                      .message = std::string(reason)}};
}

platform::Expected<ExtensionConnection, ConnectionError>
ExtensionConnection::open(const Manifest& manifest, const std::optional<std::filesystem::path>& home,
                          Confined confined) {
    auto channel = ExtensionChannel::open(manifest, home, confined);
    if (!channel) {
        return Unexpected{ConnectionError{.message = channel.error()}};
    }
    return ExtensionConnection(*std::move(channel));
}

platform::Expected<std::string, ConnectionError> ExtensionConnection::answer(std::int64_t id,
                                                                             std::chrono::milliseconds timeout) {
    while (!answers_.contains(id)) {
        if (channel_.lost()) {
            return Unexpected{ConnectionError{.message = *channel_.lost()}};
        }
        exchange(timeout);
    }
    return answerWithResult(std::move(answers_.extract(id).mapped()));
}

void ExtensionConnection::exchange(std::chrono::milliseconds timeout) {
    auto descriptors = channel_.awaited();
    if (channel_.isClosed()) {
        timeout = Timeouts{}.shutdown;
    }
    if (poll(descriptors.data(), descriptors.size(), static_cast<int>(timeout.count())) == 0) {
        channel_.expire(timeout);
    }
    channel_.exchange(descriptors);
    while (auto answer = channel_.nextAnswer()) {
        answers_.insert_or_assign(answer->id, std::move(answer->line));
    }
}

} // namespace host
