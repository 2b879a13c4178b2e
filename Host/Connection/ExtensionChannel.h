// The host's end of the protocol without any waiting: lines out, answers in, as the descriptors are ready for them.
//
// Whoever owns a channel waits for the descriptors that it names, in a loop of its own, and says which are ready. What
// an extension may do is bounded: an answer has at most `greatestAnswer` bytes, and at most `mostUnasked` lines may
// come that nobody asked for. Time is the owner's business. Not for several threads.
#pragma once

#include "Host/Connection/ExtensionProcess.h"
#include "Host/Connection/Manifest.h"
#include "Platform/Foundation/Expected.h"

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <filesystem>
#include <optional>
#include <poll.h>
#include <set>
#include <string>
#include <string_view>

namespace host {

class ExtensionChannel {
  public:
    static constexpr std::size_t greatestAnswer = std::size_t{8} << 20U;
    static constexpr int mostUnasked = 1000;

    /// Starts the extension; `home` as in `makeExtensionEnvironment`. The error is one clear line.
    static platform::Expected<ExtensionChannel, std::string>
    open(const Manifest& manifest, const std::optional<std::filesystem::path>& home, Confined confined);

    /// Sends a request as soon as there is room; `params` is a JSON object. The answer comes under the id.
    std::int64_t send(std::string_view method, std::string_view params);

    /// No more requests: the extension sees the end of its input as soon as everything is sent, and leaves.
    void endInput();

    /// What to wait for, for `poll`; a descriptor of -1 is nothing to wait for.
    using Descriptors = std::array<pollfd, 4>;
    Descriptors awaited() const;

    /// Moves what can be moved either way; `ready` is `awaited()` with the events that there were.
    void exchange(const Descriptors& ready);

    struct Answer {
        std::int64_t id = 0;
        /// A JSON-RPC message.
        std::string line;
    };
    /// The answers that have come, one at a time.
    std::optional<Answer> nextAnswer();

    /// How many requests have no answer yet.
    std::size_t unansweredCount() const { return unanswered_.size(); }

    /// Whether the extension has closed its output, as it does when it exits: its end is waited for, which says why.
    bool isClosed() const { return !process_.output().isOpen(); }

    /// Why no more answers will come, one clear line; nothing while they may. The process has ended then, or is killed.
    const std::optional<std::string>& lost() const { return lost_; }

    /// Whether the process is gone, so that destroying this waits for nothing.
    bool hasEnded() const { return process_.isReaped(); }

    /// Whether the extension does not see all that it may: see `ExtensionProcess::isStale`.
    bool isStale() const { return process_.isStale(); }

    /// Kills the extension, because it `why` ("did not leave"). Does not wait for its end.
    void lose(std::string_view why);
    /// The same, because nothing came for that long.
    void expire(std::chrono::milliseconds timeout);

    const Manifest& manifest() const { return manifest_; }

  private:
    ExtensionChannel(Manifest manifest, ExtensionProcess process)
        : manifest_(std::move(manifest)), process_(std::move(process)) {}

    void write();
    void readWords();
    void readAnswers();
    void takeLine(std::string_view line);

    Manifest manifest_;
    ExtensionProcess process_;
    std::int64_t lastId_ = 0;
    int unasked_ = 0;
    bool inputEnds_ = false;
    std::string outgoing_;
    std::string incoming_;
    std::string lastWords_;
    std::size_t wordsRead_ = 0;
    std::set<std::int64_t> unanswered_;
    std::deque<Answer> answers_;
    std::optional<std::string> lost_;
};

} // namespace host
