#include "Platform/Widgets/BundleRunner.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <malloc.h>
#include <poll.h>
#include <string_view>
#include <sys/timerfd.h>
#include <system_error>
#include <unistd.h>

namespace platform {
namespace {

constexpr long nanosecondsOfMillisecond = 1'000'000;

void expireAfter(int timer, long nanoseconds) {
    const itimerspec once{.it_interval = {}, .it_value = {.tv_sec = 0, .tv_nsec = nanoseconds}};
    timerfd_settime(timer, 0, &once, nullptr);
}

void neverExpire(int timer) {
    expireAfter(timer, 0);
}

void expireForGood(int timer) {
    // Again and again: who has just not seen yet that the end has come may take the first for an ordinary one.
    const itimerspec always{.it_interval = {.tv_sec = 0, .tv_nsec = nanosecondsOfMillisecond},
                            .it_value = {.tv_sec = 0, .tv_nsec = 1}};
    timerfd_settime(timer, 0, &always, nullptr);
}

} // namespace

BundleRunner::BundleRunner(const WidgetBundle& bundle, int input, int output)
    : bundle_(bundle), handler_(bundle), reader_(input, output), output_(output),
      timer_(timerfd_create(CLOCK_MONOTONIC, TFD_CLOEXEC | TFD_NONBLOCK)) {}

BundleRunner::~BundleRunner() {
    close(timer_);
}

void BundleRunner::run() {
    readOn(0);
    if (timer_ >= 0) {
        ++standingBy_;
        standBy();
    }
    // Input has ended, so nobody reads and nobody starts a thread any more; what is still worked on is waited for.
    threads_.clear();
}

void BundleRunner::readOn(std::uint64_t count) {
    while (const auto line = reader_.next()) {
        ensureRelief();
        turn_ = busyTurn(count);
        expireAfter(timer_, patienceMilliseconds * nanosecondsOfMillisecond);
        answer(*line);
        Turn mine = busyTurn(count);
        if (!turn_.compare_exchange_strong(mine, idleTurn(count))) {
            return;
        }
        neverExpire(timer_);
    }
    if (reader_.outputClosed()) {
        _exit(EXIT_SUCCESS);
    }
    if (bundle_.inputEnded) {
        bundle_.inputEnded();
    }
    ended_ = true;
    expireForGood(timer_);
}

void BundleRunner::standBy() {
    while (!ended_) {
        const auto turn = takeTurnOfSlowReader();
        --standingBy_;
        if (turn) {
            readOn(*turn);
        }
        ++standingBy_;
    }
}

std::optional<std::uint64_t> BundleRunner::takeTurnOfSlowReader() {
    const std::scoped_lock lock(watching_);
    while (!ended_) {
        pollfd expired{timer_, POLLIN, 0};
        std::uint64_t times = 0;
        if (poll(&expired, 1, -1) < 0 || ended_ || ::read(timer_, &times, sizeof times) < 0) {
            continue;
        }
        Turn slow = turn_;
        if (isBusy(slow) && turn_.compare_exchange_strong(slow, idleTurn(countOf(slow) + 1))) {
            return countOf(slow) + 1;
        }
    }
    return std::nullopt;
}

void BundleRunner::ensureRelief() {
    if (standingBy_ > 0 || timer_ < 0 || threads_.size() + 1 >= greatestConcurrency) {
        return;
    }
    ++standingBy_;
    try {
        threads_.emplace_back([this] { standBy(); });
    } catch (const std::system_error&) {
        --standingBy_;
        // No thread to be had: this one reads on when it has answered.
    }
}

void BundleRunner::answer(const LineReader::Line& line) {
    if (line.tooLong) {
        write(RequestHandler::answerToTooLongLine());
    } else if (auto text = handler_.answer(line.text)) {
        write(*std::move(text));
    }
}

void BundleRunner::write(std::string answer) {
    answer += '\n';
    const std::scoped_lock lock(writing_);
    for (std::string_view rest = answer; !rest.empty();) {
        const ssize_t count = ::write(output_, rest.data(), rest.size());
        if (count >= 0) {
            rest.remove_prefix(static_cast<std::size_t>(count));
        } else if (errno == EAGAIN) {
            pollfd writable{output_, POLLOUT, 0};
            poll(&writable, 1, -1);
        } else if (errno != EINTR) {
            _exit(EXIT_SUCCESS);
        }
    }
}

int runBundle(const WidgetBundle& bundle) {
    std::signal(SIGPIPE, SIG_IGN);
    // Room for a file that is read whole is kept for the next request, not asked of the system page by page each time;
    // and threads do not keep heaps of their own.
    constexpr int keptRoom = 8 << 20;
    mallopt(M_MMAP_THRESHOLD, keptRoom);
    mallopt(M_TRIM_THRESHOLD, keptRoom);
    mallopt(M_ARENA_MAX, 1);
    if (isatty(STDIN_FILENO) != 0) {
        std::fputs(
            "This is a widget extension: a widget host starts it, and speaks JSON-RPC with it, a message a line.\n",
            stderr);
    }
    BundleRunner(bundle, STDIN_FILENO, STDOUT_FILENO).run();
    return EXIT_SUCCESS;
}

} // namespace platform
