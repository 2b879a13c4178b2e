#include "Tests/Platform/Widgets/ClockWidget.h"
#include "Tests/Support/ChildProcess.h"
#include "Tests/Support/TemporaryFolder.h"

#include "Platform/Foundation/FileDescriptor.h"
#include "Platform/Widgets/BundleRunner.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <csignal>
#include <fcntl.h>
#include <sstream>
#include <thread>

namespace platform {
namespace {

/// Returns the lines that the runner writes for `input`.
std::vector<std::string> answersTo(const WidgetBundle& bundle, const std::string& input) {
    const TemporaryFolder folder;
    const FileDescriptor in(open(folder.write("input", input).c_str(), O_RDONLY | O_CLOEXEC));
    const FileDescriptor out(open(folder.write("output", "").c_str(), O_WRONLY | O_CLOEXEC));
    BundleRunner(bundle, in.get(), out.get()).run();
    std::vector<std::string> lines;
    std::istringstream output(folder.content("output"));
    for (std::string line; std::getline(output, line);) {
        lines.push_back(line);
    }
    return lines;
}

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
    const std::string input = request(1, limit) + "\n" + request(2, limit + 1) + "\n" + std::string(5 * limit, 'x') +
                              "\n" + request(3) + "\n\n" + request(4);
    const auto noMethod = [](const char* id) { return error(id, "-32601", R"(no method \"none\")"); };
    const std::string tooLong = error("null", "-32600", "the line is longer than 1 MiB");
    EXPECT_THAT(answersTo(testing::clockBundle(), input),
                ::testing::ElementsAre(noMethod("1"), tooLong, tooLong, noMethod("3"),
                                       error("null", "-32700", "the line is not JSON"), noMethod("4")));
}

TEST(BundleRunner, HoldsNothingUpForAnyNumberOfSlowRequests) {
    constexpr int slowRequests = 10'000;
    std::vector<std::function<void()>> waiting;
    std::string events;
    WidgetBundle bundle = testing::clockBundle([&](const std::string& city, const std::function<void()>& goOn) {
        if (city == "slow") {
            waiting.push_back(goOn);
        } else {
            goOn();
            events += "quick ";
        }
    });
    bundle.inputEnded = [&] {
        events += "end";
        std::jthread([&] {
            for (const auto& goOn : waiting) {
                goOn();
            }
        });
    };
    std::string input;
    for (int i = 0; i < slowRequests; ++i) {
        input += timelineOf("slow");
    }
    const auto answers = answersTo(bundle, input + timelineOf("quick"));
    EXPECT_EQ(answers.size(), slowRequests + 1U);
    EXPECT_THAT(answers, ::testing::Each(::testing::HasSubstr("\"result\"")));
    EXPECT_THAT(answers.front(), ::testing::HasSubstr("digital in quick"));
    EXPECT_EQ(events, "quick end");
}

/// A runner in a process of its own, with a request that is never answered.
TEST(BundleRunner, EndsItsProcessWhenItsOutputIsClosed) {
    for (const std::string& line : {std::string(), timelineOf("endless"), request(1) + "\n"}) {
        std::array<int, 2> input{};
        std::array<int, 2> output{};
        ASSERT_TRUE(pipe(input.data()) == 0 && pipe(output.data()) == 0);
        const pid_t child = startProcess([&] {
            close(input[1]);
            close(output[0]);
            std::signal(SIGPIPE, SIG_IGN);
            alarm(20);
            std::vector<std::function<void()>> waiting;
            WidgetBundle bundle = testing::clockBundle(
                [&](const std::string&, const std::function<void()>& goOn) { waiting.push_back(goOn); });
            BundleRunner(bundle, input[0], output[1]).run();
            _exit(3);
            return false;
        });
        close(output[1]);
        EXPECT_EQ(write(input[1], line.data(), line.size()), std::ssize(line));
        close(output[0]);
        EXPECT_EQ(statusOf(child), 0) << line;
        close(input[0]);
        close(input[1]);
    }
}

} // namespace
} // namespace platform
