#include "Host/Connection/ExtensionChannel.h"

#include "Platform/Foundation/JsonWriter.h"

#include <fmt/format.h>
#include <simdjson.h>

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>
#include <utility>

namespace host {
namespace {

using platform::Unexpected;

constexpr std::size_t chunkSize = std::size_t{64} << 10U;
constexpr std::size_t greatestLastWords = 4096;
/// Who has this much to say on standard error is not listened to any more.
constexpr std::size_t mostWords = std::size_t{1} << 20U;

enum Watched : std::size_t { output, errors, input, end };

void makeNonBlocking(int descriptor) {
    fcntl(descriptor, F_SETFL, fcntl(descriptor, F_GETFL) | O_NONBLOCK);
}

/// Reads what is there, into the end of `text`; false at the end of input.
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

platform::Expected<ExtensionChannel, std::string>
ExtensionChannel::open(const Manifest& manifest, const std::optional<std::filesystem::path>& home, Confined confined) {
    // A write to an extension that has gone is an error to be handled, not a signal.
    std::signal(SIGPIPE, SIG_IGN);
    auto environment = makeExtensionEnvironment(manifest, home);
    if (!environment) {
        return Unexpected{environment.error()};
    }
    auto process = ExtensionProcess::start(manifest, *std::move(environment), confined);
    if (!process) {
        return Unexpected{process.error()};
    }
    for (const platform::FileDescriptor* end : {&process->input(), &process->output(), &process->errors()}) {
        makeNonBlocking(end->get());
    }
    return ExtensionChannel(manifest, *std::move(process));
}

std::int64_t ExtensionChannel::send(std::string_view method, std::string_view params) {
    platform::JsonWriter out(outgoing_);
    out.beginObject().member("jsonrpc", "2.0").key("id").number(++lastId_);
    out.member("method", method).key("params").raw(params).endObject();
    outgoing_ += '\n';
    unanswered_.insert(lastId_);
    return lastId_;
}

void ExtensionChannel::endInput() {
    inputEnds_ = true;
    if (outgoing_.empty()) {
        process_.input().close();
    }
}

ExtensionChannel::Descriptors ExtensionChannel::awaited() const {
    return {pollfd{process_.output().get(), POLLIN, 0}, pollfd{process_.errors().get(), POLLIN, 0},
            pollfd{outgoing_.empty() ? -1 : process_.input().get(), POLLOUT, 0},
            // An extension may exit before its answers are read.
            pollfd{isClosed() ? process_.end().get() : -1, POLLIN, 0}};
}

void ExtensionChannel::exchange(const Descriptors& ready) {
    if (ready[errors].revents != 0) {
        readWords();
    }
    if (ready[input].revents != 0) {
        write();
    }
    if (ready[output].revents != 0) {
        readAnswers();
    }
    if (ready[end].revents != 0) {
        if (const auto how = process_.reap()) {
            lose(*how);
        }
    }
}

std::optional<ExtensionChannel::Answer> ExtensionChannel::nextAnswer() {
    if (answers_.empty()) {
        return std::nullopt;
    }
    Answer answer = std::move(answers_.front());
    answers_.pop_front();
    return answer;
}

void ExtensionChannel::write() {
    const ssize_t count = ::write(process_.input().get(), outgoing_.data(), outgoing_.size());
    if (count > 0) {
        outgoing_.erase(0, static_cast<std::size_t>(count));
    } else if (errno != EAGAIN && errno != EINTR) {
        // It reads no more; its output tells how that came.
        outgoing_.clear();
        process_.input().close();
    }
    if (inputEnds_ && outgoing_.empty()) {
        process_.input().close();
    }
}

void ExtensionChannel::readWords() {
    const std::size_t before = lastWords_.size();
    const bool hasMore = readSome(process_.errors().get(), lastWords_);
    wordsRead_ += lastWords_.size() - before;
    if (!hasMore || wordsRead_ > mostWords) {
        process_.errors().close();
    }
    if (lastWords_.size() > greatestLastWords) {
        lastWords_.erase(0, lastWords_.size() - greatestLastWords);
    }
}

void ExtensionChannel::readAnswers() {
    const std::size_t searched = incoming_.size();
    if (!readSome(process_.output().get(), incoming_)) {
        process_.input().close();
        process_.output().close();
        return;
    }
    std::size_t start = 0;
    for (std::size_t stop = incoming_.find('\n', searched); stop != std::string::npos && !lost_;
         stop = incoming_.find('\n', start)) {
        takeLine(std::string_view(incoming_).substr(start, stop - start));
        start = stop + 1;
    }
    incoming_.erase(0, start);
    if (incoming_.size() > greatestAnswer) {
        lose(fmt::format("sent an answer of more than {} bytes", greatestAnswer));
    }
}

void ExtensionChannel::takeLine(std::string_view line) {
    simdjson::dom::parser parser;
    simdjson::dom::element message;
    std::int64_t id = 0;
    if (parser.parse(line).get(message) != simdjson::SUCCESS) {
        lose("sent something else than a message");
    } else if (message["id"].get(id) == simdjson::SUCCESS && unanswered_.erase(id) == 1) {
        answers_.push_back({id, std::string(line)});
    } else if (++unasked_ > mostUnasked) {
        lose("keeps sending what nobody asked for");
    }
}

void ExtensionChannel::lose(std::string_view why) {
    if (lost_) {
        return;
    }
    // What it wrote about its end says more than its exit code.
    if (process_.errors().isOpen()) {
        readSome(process_.errors().get(), lastWords_);
    }
    process_.kill();
    for (platform::FileDescriptor* stream : {&process_.input(), &process_.output(), &process_.errors()}) {
        stream->close();
    }
    const std::string_view words = lastLine(lastWords_);
    lost_ = fmt::format("the extension {} {}{}{}", manifest_.executable.filename().string(), why,
                        words.empty() ? "" : ": ", words);
}

void ExtensionChannel::expire(std::chrono::milliseconds timeout) {
    if (isClosed()) {
        lose("closed its output");
    } else {
        lose(fmt::format("was silent for {:g} seconds", std::chrono::duration<double>(timeout).count()));
    }
}

} // namespace host
