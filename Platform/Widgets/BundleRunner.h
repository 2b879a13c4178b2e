// The extension's end of the connection: takes lines, answers them concurrently, and ends as the protocol says.
//
// The thread that reads a line answers it itself, so that a quick answer is never handed between threads. Beside it a
// relief stands by: when the reader has been busy with one answer for longer than `patienceMilliseconds`, the relief
// reads on in its place, with a new relief beside it, and the slow one joins the waiting when it is done. So a slow
// answer holds nobody up, and nobody wakes up for a quick one.
#pragma once

#include "Platform/Widgets/LineReader.h"
#include "Platform/Widgets/RequestHandler.h"

#include <atomic>
#include <cstdint>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace platform {

class BundleRunner {
  public:
    static constexpr int patienceMilliseconds = 2;
    /// Answers that are worked on at once, at most. More requests wait for one of these.
    static constexpr std::size_t greatestConcurrency = 64;

    /// `bundle` must outlive the runner.
    BundleRunner(const WidgetBundle& bundle, int input, int output);
    BundleRunner(const BundleRunner&) = delete;
    BundleRunner& operator=(const BundleRunner&) = delete;
    ~BundleRunner();

    /// Serves until the end of input and of everything accepted before it. When the output is closed, nobody waits for
    /// what is still being worked on: the process ends at once, with 0.
    void run();

  private:
    /// Whose turn to read it is: a count of the changes of readers, and whether that reader is busy with an answer.
    enum class Turn : std::uint64_t {};
    static constexpr Turn idleTurn(std::uint64_t count) { return Turn{count << 1U}; }
    static constexpr Turn busyTurn(std::uint64_t count) { return Turn{count << 1U | 1U}; }
    static constexpr bool isBusy(Turn turn) { return (static_cast<std::uint64_t>(turn) & 1U) != 0; }
    static constexpr std::uint64_t countOf(Turn turn) { return static_cast<std::uint64_t>(turn) >> 1U; }

    void readOn(std::uint64_t count);
    void standBy();
    std::optional<std::uint64_t> takeTurnOfSlowReader();
    void ensureRelief();
    void answer(const LineReader::Line& line);
    void write(std::string answer);

    const WidgetBundle& bundle_;
    RequestHandler handler_;
    LineReader reader_;
    int output_;
    /// Expires when the reader has been busy for too long, and again and again after the end of input. Without one,
    /// which only a process out of descriptors is, requests are answered one after the other.
    int timer_;

    std::atomic<Turn> turn_{idleTurn(0)};
    std::atomic<bool> ended_ = false;
    /// Counted before they get there, so that one that is still starting is not started twice.
    std::atomic<std::size_t> standingBy_ = 0;

    /// Held by the one that watches the reader.
    std::mutex watching_;
    /// Touched by the reader alone, until input has ended.
    std::vector<std::jthread> threads_;
    std::mutex writing_;
};

} // namespace platform
