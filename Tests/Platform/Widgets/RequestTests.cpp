#include "Tests/Platform/Widgets/ClockWidget.h"
#include "Tests/Support/ChildProcess.h"
#include "Tests/Support/Repeated.h"
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
std::vector<std::string> responsesTo(const WidgetBundle& bundle, const std::string& input) {
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
    EXPECT_THAT(responsesTo(testing::clockBundle(), input),
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
    const auto responses = responsesTo(bundle, repeated(timelineOf("slow"), slowRequests) + timelineOf("quick"));
    EXPECT_EQ(responses.size(), slowRequests + 1U);
    EXPECT_THAT(responses, ::testing::Each(::testing::HasSubstr("\"result\"")));
    EXPECT_THAT(responses.front(), ::testing::HasSubstr("digital in quick"));
    EXPECT_EQ(events, "quick end");
}

/// A runner in a process of its own, with a request that is without a response.
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

std::string responseTo(std::string_view line) {
    const WidgetBundle bundle = testing::clockBundle();
    std::string all;
    RequestHandler(bundle).handle(line, [&](const std::string& response) { all += response; });
    return all;
}

std::string requestOf(std::string_view method, std::string_view params) {
    std::string line = R"({"jsonrpc":"2.0","id":7,"method":")";
    return line.append(method).append(R"(","params":)").append(params) + "}";
}

TEST(RequestHandler, RespondsToEveryMethod) {
    const std::tuple<const char*, const char*, std::string> rows[]{
        {"describe", "{}",
         R"({"identifier":"example.clock","widgets":[{"kind":"Clock","displayName":"Clock","description":"Shows the time.","families":["small","extraLarge"],"containerBackground":"tertiaryFill","configuration":{"title":"Clock","description":"Shows the time.","parameters":[{"name":"face","title":"Face","type":"enumeration","typeName":"Clock Face","default":"digital","cases":[{"id":"digital","title":"Digital"},{"id":"analog","title":"Analog"}]},{"name":"city","title":"City","type":"entity","typeName":"City","default":"Rome"}]}}]})"},
        {"placeholder", R"({"kind":"Clock","environment":{"family":"small"}})",
         R"({"date":"2001-01-01T00:00:00.000Z","content":{"view":{"type":"text","text":"placeholder, small"},"containerBackground":"tertiaryFill"}})"},
        {"snapshot",
         R"({"kind":"Clock","configuration":{"face":"analog","city":"Atlantis"},"environment":{"family":"extraLarge","renderingMode":"tinted"}})",
         R"({"date":"2001-01-01T00:00:01.500Z","content":{"view":{"type":"text","text":"analog in Atlantis, extraLarge, muted"},"containerBackground":"tertiaryFill"}})"},
        {"snapshot",
         R"({"kind":"Clock","configuration":{},"environment":{"family":"gigantic","renderingMode":"fullColor"},"more":1})",
         R"({"date":"2001-01-01T00:00:01.500Z","content":{"view":{"type":"text","text":"digital in Rome, unknown"},"containerBackground":"tertiaryFill"}})"},
        {"timeline", R"({"kind":"Clock","configuration":{"city":"Lima"},"environment":{"family":"medium"}})",
         R"({"entries":[{"date":"2001-01-01T00:00:01.500Z","content":{"view":{"type":"text","text":"digital in Lima, medium"},"containerBackground":"tertiaryFill"}},{"date":"2001-01-01T00:00:02.000Z","content":{"view":{"type":"text","text":"later, medium"},"containerBackground":"tertiaryFill","widgetURL":"clock://later"}}],"reload":{"policy":"after","date":"2001-01-01T00:05:00.000Z"},"watches":["Clocks/Lima","Cities"]})"},
        {"options", R"({"kind":"Clock","parameter":"city"})",
         R"({"options":[{"id":"Rome","title":"City of Rome"},{"id":"Lima","title":"City of Lima"}],"default":{"id":"Rome","title":"City of Rome"}})"},
        {"options", R"({"kind":"Clock","parameter":"city","matching":"x"})",
         R"({"options":[{"id":"Like x","title":"City of Like x"}],"default":{"id":"Rome","title":"City of Rome"}})"},
        {"options", R"({"kind":"Clock","parameter":"city","identifiers":["B","A"]})",
         R"({"options":[{"id":"B","title":"City of B"},{"id":"A","title":"City of A"}],"default":{"id":"Rome","title":"City of Rome"}})"},
        {"options", R"({"kind":"Clock","parameter":"face"})",
         R"({"options":[{"id":"digital","title":"Digital"},{"id":"analog","title":"Analog"}],"default":{"id":"digital","title":"Digital"}})"},
        {"previews", "{}",
         R"({"previews":[{"kind":"Clock","name":"Ticking","family":"extraLarge"},{"kind":"Clock","name":"Broken","family":"small"}]})"},
        {"preview", R"({"kind":"Clock","name":"Ticking"})",
         R"({"entries":[{"date":"2001-01-01T00:00:00.000Z","content":{"view":{"type":"text","text":"tick, extraLarge"},"containerBackground":"tertiaryFill"}}]})"},
    };
    for (const auto& [method, params, result] : rows) {
        EXPECT_EQ(responseTo(requestOf(method, params)), R"({"jsonrpc":"2.0","id":7,"result":)" + result + "}")
            << params;
    }
}

TEST(RequestHandler, RefusesWithTheRightCodeAndTheSameId) {
    const std::string environment = R"("environment":{"family":"small"})";
    const std::string clock = R"({"kind":"Clock")";
    struct Row {
        std::string line;
        std::string id;
        int code;
        const char* says;
    };
    std::vector<Row> rows{
        {"", "null", -32700, "not JSON"},
        {R"({"jsonrpc":"2.0","id":1,"method":"describe"})" + std::string(1, '\0'), "null", -32700, "not JSON"},
        {R"({"jsonrpc":"2.0","id":1,"method":"describe"} x)", "null", -32700, "not JSON"},
        {R"([{"jsonrpc":"2.0","id":1,"method":"describe"}])", "null", -32600, "no request object"},
        {"7", "null", -32600, "no request object"},
        {std::string(200'000, '['), "null", -32600, "no request object"},
        {R"({"jsonrpc":"1.0","id":"a","method":"describe"})", R"("a")", -32600, "jsonrpc"},
        {R"({"jsonrpc":"2.0","id":3,"method":4})", "3", -32600, "method"},
        {R"({"jsonrpc":"2.0","id":1.5,"method":"describe"})", "null", -32600, "id"},
        {R"({"jsonrpc":"2.0","id":null,"method":"describe"})", "null", -32600, "id"},
        {R"({"jsonrpc":"2.0","id":-9223372036854775808,"method":"none"})", "-9223372036854775808", -32601, "none"},
        {R"({"jsonrpc":"2.0","id":18446744073709551615,"method":"Describe"})", "18446744073709551615", -32601,
         "Describe"},
        {R"({"jsonrpc":"2.0","id":7,"method":"describe","params":[]})", "7", -32602, "params"},
        {requestOf("preview", R"({"kind":"Clock","name":"Broken"})"), "7", -32603, "the spring broke"},
    };
    const std::tuple<const char*, std::string, const char*> wrongParams[]{
        {"placeholder", R"({"kind":"Clock"})", "\\\"environment\\\" is missing"},
        {"placeholder", R"({"kind":"Sundial",)" + environment + "}", "accepted: \\\"Clock\\\""},
        {"placeholder", R"({"kind":"Clock","environment":"small"})", "is no object"},
        {"placeholder", R"({"kind":"Clock","environment":{"family":2}})", "\\\"family\\\" is no text"},
        {"snapshot", clock + "," + environment + "}", "\\\"configuration\\\" is missing"},
        {"timeline", R"({"kind":"Clock","configuration":{"face":"sand"},)" + environment + "}",
         "accepted: \\\"digital\\\", \\\"analog\\\""},
        {"timeline", R"({"kind":"Clock","configuration":{"hands":"two"},)" + environment + "}",
         "accepted: \\\"face\\\", \\\"city\\\""},
        {"timeline", R"({"kind":"Clock","configuration":{"face":1},)" + environment + "}", "is no text"},
        {"options", R"({"kind":"Clock","parameter":"hands"})", "accepted: \\\"face\\\""},
        {"options", R"({"kind":"Clock","parameter":"city","matching":"a","identifiers":[]})", "one at most"},
        {"options", R"({"kind":"Clock","parameter":"city","identifiers":[1]})", "list of texts"},
        {"options", R"({"kind":"Clock","parameter":"city","matching":null})", "is no text"},
        {"preview", R"({"kind":"Clock","name":"ticking"})", "\\\"Ticking\\\""},
    };
    for (const auto& [method, params, says] : wrongParams) {
        rows.push_back({requestOf(method, params), "7", -32602, says});
    }
    for (const Row& row : rows) {
        const std::string response = responseTo(row.line);
        const std::string start =
            R"({"jsonrpc":"2.0","id":)" + row.id + R"(,"error":{"code":)" + std::to_string(row.code) + ",";
        EXPECT_EQ(response.substr(0, start.size()), start) << row.line.substr(0, 100);
        EXPECT_NE(response.find(row.says), std::string::npos) << response;
    }
    // Notifications have no response.
    EXPECT_EQ(responseTo(R"({"jsonrpc":"2.0","method":"describe"})"), "");
    EXPECT_EQ(responseTo(R"({"jsonrpc":"2.0","method":"preview","params":7})"), "");
}

} // namespace
} // namespace platform
