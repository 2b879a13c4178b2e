// The runner over real pipes: lines, their lengths, concurrency, and how it ends.

#include "Tests/Platform/Widgets/ClockWidget.h"

#include "Platform/Widgets/BundleRunner.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <csignal>
#include <future>
#include <latch>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace platform {
namespace {

struct Pipe {
    int reading = -1;
    int writing = -1;
    Pipe() {
        std::array<int, 2> ends{};
        EXPECT_EQ(pipe(ends.data()), 0);
        reading = ends[0];
        writing = ends[1];
    }
};

void writeAll(int descriptor, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t count = write(descriptor, bytes.data(), bytes.size());
        ASSERT_GT(count, 0);
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
}

std::string readToEnd(int descriptor) {
    std::string all;
    std::array<char, 4096> chunk{};
    for (ssize_t count = 0; (count = read(descriptor, chunk.data(), chunk.size())) > 0;) {
        all.append(chunk.data(), static_cast<std::size_t>(count));
    }
    return all;
}

/// A runner on a thread of its own, fed and read through pipes.
class Running {
  public:
    explicit Running(WidgetBundle bundle) : bundle_(std::move(bundle)) {
        answers_ = std::async(std::launch::async, [this] { return readToEnd(output_.reading); });
        thread_ = std::jthread([this] {
            BundleRunner(bundle_, input_.reading, output_.writing).run();
            close(output_.writing);
        });
    }

    void send(std::string_view bytes) const { writeAll(input_.writing, bytes); }

    /// Ends the input. Returns the lines of output, sorted.
    std::vector<std::string> finish() {
        close(input_.writing);
        const std::string all = answers_.get();
        std::vector<std::string> lines;
        for (std::size_t start = 0; start < all.size();) {
            const std::size_t end = all.find('\n', start);
            lines.push_back(all.substr(start, end - start));
            start = end + 1;
        }
        std::sort(lines.begin(), lines.end());
        return lines;
    }

  private:
    WidgetBundle bundle_;
    Pipe input_;
    Pipe output_;
    std::future<std::string> answers_;
    std::jthread thread_;
};

std::string noSuchMethod(int id, std::size_t length = 0) {
    std::string line = R"({"jsonrpc":"2.0","method":"none","id":)" + std::to_string(id) + "}";
    line.resize(std::max(line.size(), length), ' ');
    return line;
}

std::string noMethod(int id) {
    return R"({"jsonrpc":"2.0","id":)" + std::to_string(id) +
           R"(,"error":{"code":-32601,"message":"no method \"none\""}})";
}

std::string timelineOf(const std::string& city) {
    return R"({"jsonrpc":"2.0","id":")" + city +
           R"(","method":"timeline","params":{"kind":"Clock","configuration":{"city":")" + city +
           R"("},"environment":{"family":"small"}}})" + "\n";
}

TEST(BundleRunner, TakesLinesUpToOneMebibyteAndPassesOverLongerOnes) {
    constexpr std::size_t limit = LineReader::maxLength;
    Running running(testing::clockBundle());
    running.send(noSuchMethod(1, limit) + "\n" + noSuchMethod(2, limit + 1) + "\n" + std::string(5 * limit, 'x') +
                 "\n");
    running.send(noSuchMethod(3) + "\n\n" + noSuchMethod(4));
    const std::string tooLong =
        R"({"jsonrpc":"2.0","id":null,"error":{"code":-32600,"message":"the line is longer than 1 MiB"}})";
    const std::string notJson =
        R"({"jsonrpc":"2.0","id":null,"error":{"code":-32700,"message":"the line is not JSON"}})";
    EXPECT_EQ(running.finish(), (std::vector{noMethod(1), noMethod(3), noMethod(4), tooLong, tooLong, notJson}));
}

TEST(BundleRunner, HoldsNothingUpForAnyNumberOfSlowRequests) {
    constexpr int slowRequests = 10'000;
    std::vector<std::function<void()>> waiting;
    std::atomic<int> ends = 0;
    std::latch quickAnswered(1);
    WidgetBundle bundle = testing::clockBundle([&](const std::string& city, const std::function<void()>& goOn) {
        if (city == "slow") {
            waiting.push_back(goOn);
        } else {
            goOn();
            quickAnswered.count_down();
        }
    });
    bundle.inputEnded = [&] {
        ++ends;
        // Answers only now that the end has been seen, on a thread of its own.
        std::jthread([&] {
            for (const auto& goOn : waiting) {
                goOn();
            }
        });
    };
    Running running(std::move(bundle));
    for (int i = 0; i < slowRequests; ++i) {
        running.send(timelineOf("slow"));
    }
    running.send(timelineOf("quick"));
    quickAnswered.wait();
    EXPECT_EQ(ends, 0);
    const auto answers = running.finish();
    EXPECT_EQ(answers.size(), slowRequests + 1U);
    EXPECT_TRUE(std::all_of(answers.begin(), answers.end(),
                            [](const std::string& answer) { return answer.find("\"result\"") != std::string::npos; }));
    EXPECT_EQ(ends, 1);
}

/// A runner with a request that is never answered, in a process of its own whose output is closed then.
TEST(BundleRunner, EndsItsProcessWhenItsOutputIsClosed) {
    for (const std::string& line : {std::string(), timelineOf("endless"), noSuchMethod(1) + "\n"}) {
        Pipe input;
        Pipe output;
        const pid_t child = fork();
        if (child == 0) {
            close(input.writing);
            close(output.reading);
            std::signal(SIGPIPE, SIG_IGN);
            alarm(20);
            std::vector<std::function<void()>> waiting;
            WidgetBundle bundle = testing::clockBundle(
                [&](const std::string&, const std::function<void()>& goOn) { waiting.push_back(goOn); });
            BundleRunner(bundle, input.reading, output.writing).run();
            _exit(3);
        }
        close(output.writing);
        writeAll(input.writing, line);
        close(output.reading);
        int status = 0;
        EXPECT_EQ(waitpid(child, &status, 0), child);
        EXPECT_EQ(status, 0) << line;
        close(input.reading);
        close(input.writing);
    }
}

} // namespace
} // namespace platform
