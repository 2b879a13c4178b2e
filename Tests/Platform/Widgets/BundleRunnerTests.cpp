// The runner over real pipes.

#include "Tests/Platform/Widgets/ClockWidget.h"
#include "Tests/Support/ChildProcess.h"

#include "Platform/Foundation/FileDescriptor.h"
#include "Platform/Widgets/BundleRunner.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <csignal>
#include <future>
#include <latch>
#include <thread>

namespace platform {
namespace {

struct Pipe {
    FileDescriptor reading;
    FileDescriptor writing;
    Pipe() {
        std::array<int, 2> ends{};
        EXPECT_EQ(pipe(ends.data()), 0);
        reading = FileDescriptor(ends[0]);
        writing = FileDescriptor(ends[1]);
    }
};

void writeAll(const FileDescriptor& file, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t count = write(file.get(), bytes.data(), bytes.size());
        ASSERT_GT(count, 0);
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
}

std::vector<std::string> linesToEnd(const FileDescriptor& file) {
    std::vector<std::string> lines(1);
    std::array<char, 4096> chunk{};
    for (ssize_t count = 0; (count = read(file.get(), chunk.data(), chunk.size())) > 0;) {
        for (const char character : std::string_view(chunk.data(), static_cast<std::size_t>(count))) {
            character == '\n' ? void(lines.emplace_back()) : lines.back().push_back(character);
        }
    }
    lines.pop_back();
    return lines;
}

/// A runner on a thread of its own, fed and read through pipes.
class Running {
  public:
    explicit Running(WidgetBundle bundle) : bundle_(std::move(bundle)) {
        answers_ = std::async(std::launch::async, [this] { return linesToEnd(output_.reading); });
        thread_ = std::jthread([this] {
            BundleRunner(bundle_, input_.reading.get(), output_.writing.get()).run();
            output_.writing.close();
        });
    }

    void send(std::string_view bytes) const { writeAll(input_.writing, bytes); }

    /// Ends the input. Returns the lines of output.
    std::vector<std::string> finish() {
        input_.writing.close();
        return answers_.get();
    }

  private:
    WidgetBundle bundle_;
    Pipe input_;
    Pipe output_;
    std::future<std::vector<std::string>> answers_;
    std::jthread thread_;
};

/// Returns a request of at least `length` bytes for a method that does not exist.
std::string request(int id, std::size_t length = 0) {
    std::string line = R"({"jsonrpc":"2.0","method":"none","id":)" + std::to_string(id) + "}";
    line.resize(std::max(line.size(), length), ' ');
    return line;
}

std::string error(const std::string& id, const std::string& code, const std::string& message) {
    return R"({"jsonrpc":"2.0","id":)" + id + R"(,"error":{"code":)" + code + R"(,"message":")" + message + R"("}})";
}

std::string timelineOf(const std::string& city) {
    return R"({"jsonrpc":"2.0","id":0,"method":"timeline","params":{"kind":"Clock","configuration":{"city":")" + city +
           R"("},"environment":{"family":"small"}}})" + "\n";
}

TEST(BundleRunner, TakesLinesUpToOneMebibyteAndPassesOverLongerOnes) {
    constexpr std::size_t limit = LineReader::maxLength;
    Running running(testing::clockBundle());
    running.send(request(1, limit) + "\n" + request(2, limit + 1) + "\n" + std::string(5 * limit, 'x') + "\n" +
                 request(3) + "\n\n" + request(4));
    const auto noMethod = [](const char* id) { return error(id, "-32601", R"(no method \"none\")"); };
    const std::string tooLong = error("null", "-32600", "the line is longer than 1 MiB");
    EXPECT_THAT(running.finish(),
                ::testing::ElementsAre(noMethod("1"), tooLong, tooLong, noMethod("3"),
                                       error("null", "-32700", "the line is not JSON"), noMethod("4")));
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
    EXPECT_THAT(answers, ::testing::Each(::testing::HasSubstr("\"result\"")));
    EXPECT_EQ(ends, 1);
}

/// A runner in a process of its own, with a request that is never answered.
TEST(BundleRunner, EndsItsProcessWhenItsOutputIsClosed) {
    for (const std::string& line : {std::string(), timelineOf("endless"), request(1) + "\n"}) {
        Pipe input;
        Pipe output;
        const pid_t child = startProcess([&] {
            input.writing.close();
            output.reading.close();
            std::signal(SIGPIPE, SIG_IGN);
            alarm(20);
            std::vector<std::function<void()>> waiting;
            WidgetBundle bundle = testing::clockBundle(
                [&](const std::string&, const std::function<void()>& goOn) { waiting.push_back(goOn); });
            BundleRunner(bundle, input.reading.get(), output.writing.get()).run();
            _exit(3);
            return false;
        });
        output.writing.close();
        writeAll(input.writing, line);
        output.reading.close();
        EXPECT_EQ(statusOf(child), 0) << line;
    }
}

} // namespace
} // namespace platform
