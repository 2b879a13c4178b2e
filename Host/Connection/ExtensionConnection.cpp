#include "Host/Connection/ExtensionConnection.h"

#include "Platform/Foundation/JsonWriter.h"

#include <fmt/format.h>
#include <simdjson.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

namespace host {
namespace {

using platform::Unexpected;

constexpr std::size_t chunkSize = std::size_t{64} << 10U;
constexpr std::size_t greatestLastWords = 4096;

void makeNonBlocking(int descriptor) {
    fcntl(descriptor, F_SETFL, fcntl(descriptor, F_GETFL) | O_NONBLOCK);
}

/// Reads what is there, into the end of `text`. Nothing at the end of input.
std::optional<std::size_t> readSome(int descriptor, std::string& text) {
    std::array<char, chunkSize> chunk; // NOLINT(*-member-init): read fills it
    const ssize_t count = read(descriptor, chunk.data(), chunk.size());
    if (count > 0) {
        text.append(chunk.data(), static_cast<std::size_t>(count));
        return static_cast<std::size_t>(count);
    }
    if (count < 0 && (errno == EAGAIN || errno == EINTR)) {
        return 0;
    }
    return std::nullopt;
}

std::string_view lastLine(std::string_view text) {
    while (!text.empty() && (text.back() == '\n' || text.back() == ' ')) {
        text.remove_suffix(1);
    }
    return text.substr(text.rfind('\n') + 1);
}

} // namespace

platform::Expected<ExtensionConnection, ConnectionError>
ExtensionConnection::open(const Manifest& manifest, const std::optional<std::filesystem::path>& home) {
    // A write to an extension that has gone is an error to be handled, not a signal.
    std::signal(SIGPIPE, SIG_IGN);
    auto environment = makeExtensionEnvironment(manifest, home);
    if (!environment) {
        return Unexpected{ConnectionError{.message = environment.error()}};
    }
    auto process = ExtensionProcess::start(manifest, *std::move(environment));
    if (!process) {
        return Unexpected{ConnectionError{.message = process.error()}};
    }
    makeNonBlocking(process->input().number());
    makeNonBlocking(process->output().number());
    makeNonBlocking(process->errors().number());
    return ExtensionConnection(manifest, *std::move(process));
}

std::int64_t ExtensionConnection::send(std::string_view method, std::string_view params) {
    platform::JsonWriter out(outgoing_);
    out.beginObject().member("jsonrpc", "2.0").key("id").number(++lastId_);
    out.member("method", method).key("params").raw(params).endObject();
    outgoing_ += '\n';
    return lastId_;
}

platform::Expected<std::string, ConnectionError> ExtensionConnection::answer(std::int64_t id) {
    while (!answers_.contains(id)) {
        if (lost_ || !exchange()) {
            return Unexpected{ConnectionError{.message = *lost_}};
        }
    }
    std::string line = std::move(answers_.extract(id).mapped());
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

bool ExtensionConnection::exchange() {
    std::array<pollfd, 3> watched{
        pollfd{process_.output().number(), POLLIN, 0},
        pollfd{process_.errors().number(), POLLIN, 0},
        pollfd{outgoing_.empty() ? -1 : process_.input().number(), POLLOUT, 0},
    };
    const int ready = poll(watched.data(), watched.size(), silenceSeconds * 1000);
    if (ready == 0) {
        lose(fmt::format("was silent for {} seconds", silenceSeconds));
        return false;
    }
    if (watched[1].revents != 0) {
        if (!readSome(process_.errors().number(), lastWords_)) {
            process_.errors().close();
        }
        if (lastWords_.size() > greatestLastWords) {
            lastWords_.erase(0, lastWords_.size() - greatestLastWords);
        }
    }
    if ((watched[2].revents & POLLOUT) != 0) {
        const ssize_t count = write(process_.input().number(), outgoing_.data(), outgoing_.size());
        outgoing_.erase(0, count > 0 ? static_cast<std::size_t>(count) : 0);
    }
    return watched[0].revents == 0 || readAnswers();
}

bool ExtensionConnection::readAnswers() {
    const std::size_t searched = incoming_.size();
    if (!readSome(process_.output().number(), incoming_)) {
        lose({});
        return false;
    }
    std::size_t start = 0;
    for (std::size_t end = incoming_.find('\n', searched); end != std::string::npos;
         end = incoming_.find('\n', start)) {
        takeAnswer(std::string_view(incoming_).substr(start, end - start));
        start = end + 1;
    }
    incoming_.erase(0, start);
    if (incoming_.size() > greatestAnswer) {
        lose(fmt::format("sent an answer of more than {} bytes", greatestAnswer));
    }
    return !lost_;
}

void ExtensionConnection::takeAnswer(std::string_view line) {
    simdjson::dom::parser parser;
    simdjson::dom::element message;
    std::int64_t id = 0;
    if (parser.parse(line).get(message) != simdjson::SUCCESS) {
        lose("sent something else than a message");
    } else if (message["id"].get(id) == simdjson::SUCCESS && id >= 1 && id <= lastId_) {
        answers_.insert_or_assign(id, std::string(line));
    }
}

void ExtensionConnection::lose(std::string_view why) {
    if (lost_) {
        return;
    }
    // What it wrote about its end says more than its exit code.
    readSome(process_.errors().number(), lastWords_);
    const std::string ended = process_.end();
    const std::string_view words = lastLine(lastWords_);
    lost_ = fmt::format("the extension {} {}{}{}", manifest_.executable.filename().string(),
                        why.empty() ? std::string_view(ended) : why, words.empty() ? "" : ": ", words);
}

} // namespace host
