#include "Host/Connection/ExtensionClient.h"

#include "Platform/Foundation/JsonWriter.h"

#include <fmt/format.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace host {
namespace {

using platform::Failure;
using platform::FileDescriptor;
using platform::Unexpected;

constexpr std::size_t chunkSize = std::size_t{64} << 10U;
constexpr std::size_t maxStderrTail = 4096;
/// Standard error is closed after so many bytes.
constexpr std::size_t maxStderr = std::size_t{1} << 20U;

/// Appends what can be read to `text`. Returns false at the end of input.
bool readSome(int descriptor, std::string& text) {
    std::array<char, chunkSize> chunk; // NOLINT(*-member-init): read fills it
    const ssize_t count = read(descriptor, chunk.data(), chunk.size());
    if (count > 0) {
        text.append(chunk.data(), static_cast<std::size_t>(count));
    }
    return count > 0 || (count < 0 && (errno == EAGAIN || errno == EINTR));
}

std::string_view lastLine(std::string_view text) {
    while (!text.empty() && (text.back() == '\n' || text.back() == ' ')) {
        text.remove_suffix(1);
    }
    return text.substr(text.rfind('\n') + 1);
}

} // namespace

platform::Outcome<std::unique_ptr<ExtensionClient>>
ExtensionClient::start(const Manifest& manifest, const std::optional<std::filesystem::path>& home, Confined confined,
                       const Timeouts& timeouts) {
    // A write to an extension that has ended must fail instead of raising a signal.
    std::signal(SIGPIPE, SIG_IGN);
    auto environment = makeExtensionEnvironment(manifest, home);
    if (!environment) {
        return Unexpected{environment.error()};
    }
    auto process = ExtensionProcess::start(manifest, *std::move(environment), confined);
    if (!process) {
        return Unexpected{process.error()};
    }
    return std::unique_ptr<ExtensionClient>(new ExtensionClient(manifest, *std::move(process), timeouts));
}

ExtensionClient::ExtensionClient(Manifest manifest, ExtensionProcess process, const Timeouts& timeouts)
    : manifest_(std::move(manifest)), process_(std::move(process)), timeouts_(timeouts),
      lastActivity_(std::chrono::steady_clock::now()), source_([this] { dispatch(); }) {
    for (const FileDescriptor* stream : {&process_.input, &process_.output, &process_.errors}) {
        fcntl(stream->get(), F_SETFL, fcntl(stream->get(), F_GETFL) | O_NONBLOCK);
    }
    updateSource();
}

void ExtensionClient::send(std::string_view method, std::string_view params, Responded responded) {
    if (error_) {
        responded(Unexpected{*error_});
    } else {
        send(Request{std::string(method), std::string(params), std::move(responded)});
    }
}

void ExtensionClient::send(Request request) {
    if (requests_.empty()) {
        lastActivity_ = std::chrono::steady_clock::now();
    }
    platform::JsonWriter out(outgoing_);
    out.beginObject().member("jsonrpc", "2.0").key("id").number(++lastId_);
    out.member("method", request.method).key("params").raw(request.params).endObject();
    outgoing_ += '\n';
    requests_.emplace(lastId_, std::move(request));
    updateSource();
}

void ExtensionClient::takeRequests(ExtensionClient& other) {
    for (auto& [id, request] : std::exchange(other.requests_, {})) {
        if (std::exchange(request.wasTaken, true)) {
            other.requests_.emplace(id, std::move(request));
        } else {
            send(std::move(request));
        }
    }
}

void ExtensionClient::shutDown() {
    isShuttingDown_ = true;
    lastActivity_ = std::chrono::steady_clock::now();
    updateSource();
}

void ExtensionClient::setResponseTimeout(std::chrono::milliseconds timeout) {
    timeouts_.response = timeout;
    updateSource();
}

void ExtensionClient::dispatch() {
    const auto isReady = [this](const FileDescriptor& stream) {
        return stream.isOpen() && source_.isReady(stream.get());
    };
    const bool isActive = isReady(process_.errors) || isReady(process_.output);
    if (isActive && (!isShuttingDown_ || !requests_.empty())) {
        lastActivity_ = std::chrono::steady_clock::now();
    }
    if (isReady(process_.errors)) {
        readStderr();
    }
    if (isReady(process_.input)) {
        write();
    }
    if (isReady(process_.end())) {
        if (const auto how = process_.reap()) {
            fail(*how);
            source_.watch(process_.end().get(), GIOCondition{});
        }
    }
    if (isReady(process_.output)) {
        readResponses();
    }
    if (const auto due = deadline(); due && *due <= std::chrono::steady_clock::now()) {
        onTimeout();
    }
    updateSource();
    if (hasEnded() && ended_) {
        std::exchange(ended_, nullptr)();
    }
}

void ExtensionClient::write() {
    const ssize_t count = ::write(process_.input.get(), outgoing_.data(), outgoing_.size());
    if (count > 0) {
        outgoing_.erase(0, static_cast<std::size_t>(count));
    } else if (errno != EAGAIN && errno != EINTR) {
        // It has closed its input; the end of its output will have the reason.
        outgoing_.clear();
        close(process_.input);
    }
}

void ExtensionClient::readStderr() {
    const std::size_t before = stderrTail_.size();
    const bool hasMore = readSome(process_.errors.get(), stderrTail_);
    stderrSize_ += stderrTail_.size() - before;
    if (!hasMore || stderrSize_ > maxStderr) {
        close(process_.errors);
    }
    if (stderrTail_.size() > maxStderrTail) {
        stderrTail_.erase(0, stderrTail_.size() - maxStderrTail);
    }
}

void ExtensionClient::readResponses() {
    const std::size_t searched = incoming_.size();
    if (!readSome(process_.output.get(), incoming_)) {
        close(process_.output);
        outgoing_.clear();
        shutDown();
        return;
    }
    std::size_t start = 0;
    for (std::size_t stop = incoming_.find('\n', searched); stop != std::string::npos && !error_;
         stop = incoming_.find('\n', start)) {
        handleLine(std::string_view(incoming_).substr(start, stop - start));
        start = stop + 1;
    }
    incoming_.erase(0, start);
    if (incoming_.size() > maxResponse) {
        fail(fmt::format("sent an answer of more than {} bytes", maxResponse));
    }
}

void ExtensionClient::handleLine(std::string_view line) {
    simdjson::dom::element message;
    simdjson::dom::element result;
    std::string_view refusal;
    std::int64_t id = 0;
    if (parser_.parse(line).get(message) != simdjson::SUCCESS) {
        fail("sent something other than a message");
    } else if (message["id"].get(id) != simdjson::SUCCESS || !requests_.contains(id)) {
        if (++unsolicitedCount_ > maxUnsolicited) {
            fail("sent too many unrequested messages");
        }
    } else if (message["result"].get(result) == simdjson::SUCCESS && result.is_object()) {
        requests_.extract(id).mapped().responded(result);
    } else if (message["error"]["message"].get(refusal) == simdjson::SUCCESS) {
        requests_.extract(id).mapped().responded(Unexpected{Failure{Failure::Kind::usage, std::string(refusal)}});
    } else {
        fail("sent an invalid answer, with neither result nor error");
    }
}

void ExtensionClient::close(FileDescriptor& stream) {
    source_.watch(stream.get(), GIOCondition{});
    stream.close();
}

std::optional<SteadyTime> ExtensionClient::deadline() const {
    if (error_) {
        return std::nullopt;
    }
    if (!requests_.empty() && !isClosed()) {
        return lastActivity_ + timeouts_.response;
    }
    const auto timeout = isShuttingDown_ ? timeouts_.shutdown : timeouts_.idle;
    return timeout ? std::optional(lastActivity_ + *timeout) : std::nullopt;
}

void ExtensionClient::onTimeout() {
    if (isClosed()) {
        fail("closed its output");
    } else if (!requests_.empty()) {
        fail(fmt::format("was silent for {:g} seconds", std::chrono::duration<double>(timeouts_.response).count()));
    } else if (isShuttingDown_) {
        fail("did not exit");
    } else {
        shutDown();
    }
}

void ExtensionClient::fail(std::string_view why) {
    if (error_) {
        return;
    }
    // Its last message says more than its exit code.
    if (process_.errors.isOpen()) {
        readSome(process_.errors.get(), stderrTail_);
    }
    process_.kill();
    for (FileDescriptor* stream : {&process_.input, &process_.output, &process_.errors}) {
        close(*stream);
    }
    const std::string_view words = lastLine(stderrTail_);
    error_ = Failure{Failure::Kind::unavailable,
                     fmt::format("the extension {} {}{}{}", manifest_.executable.filename().string(), why,
                                 words.empty() ? "" : ": ", words)};
    for (const auto& [id, request] : std::exchange(requests_, {})) {
        request.responded(Unexpected{*error_});
    }
}

/// Sets what the main loop waits for.
void ExtensionClient::updateSource() {
    if (isShuttingDown_ && outgoing_.empty() && process_.input.isOpen()) {
        close(process_.input);
    }
    source_.watch(process_.errors.get(), G_IO_IN);
    source_.watch(process_.output.get(), G_IO_IN);
    source_.watch(process_.input.get(), outgoing_.empty() ? GIOCondition{} : G_IO_OUT);
    if (isClosed() && !hasEnded()) {
        // Not before its output is read to the end: it may exit before.
        source_.watch(process_.end().get(), G_IO_IN);
    }
    source_.setDeadline(deadline());
}

} // namespace host
