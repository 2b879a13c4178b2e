// An extension that behaves as the kind of the requested tile says, well or badly.

#include <nlohmann/json.hpp>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <pwd.h>
#include <string>
#include <unistd.h>
#include <utility>
#include <vector>

namespace {

// `Json::array` even for one element: compilers disagree about braces around one value.
using Json = nlohmann::json;

Json entry(const char* date, Json view) {
    return {{"date", date}, {"content", {{"view", std::move(view)}, {"containerBackground", "tertiaryFill"}}}};
}

Json text(const std::string& words) {
    return {{"type", "text"}, {"text", words}};
}

Json timeline(Json entries) {
    return {{"entries", std::move(entries)}, {"reload", {{"policy", "after"}, {"date", "2200-01-01T00:00:00.000Z"}}}};
}

void answer(const Json& request, const Json& result) {
    std::cout << Json{{"jsonrpc", "2.0"}, {"id", request["id"]}, {"result", result}}.dump() << std::endl;
}

/// Requests of the kind "Later", which the next "Good" one answers.
std::vector<Json> later;
bool staysAtTheEnd = false;

void serve(const Json& request) {
    constexpr const char* past = "2001-01-02T00:00:00.000Z";
    const std::string kind = request["params"]["kind"];
    const std::string words = request["params"]["configuration"].value("text", "");
    if (kind == "Good") {
        answer(request, timeline(Json::array({entry(past, text(words + " by " + std::to_string(getpid())))})));
        for (const Json& each : std::exchange(later, {})) {
            answer(each, timeline(Json::array({entry(past, text("late"))})));
        }
    } else if (kind == "Later") {
        later.push_back(request);
    } else if (kind == "Slow") {
        constexpr useconds_t microseconds = 300'000;
        usleep(microseconds);
        answer(request, timeline(Json::array({entry(past, text("by " + std::to_string(getpid())))})));
    } else if (kind == "File" || kind == "SlowFile") {
        // Reads the file of the home at that path, and names others besides.
        std::ifstream file(std::filesystem::path(getpwuid(getuid())->pw_dir) / words);
        const std::string content{std::istreambuf_iterator<char>(file), {}};
        constexpr useconds_t microseconds = 100'000;
        usleep(kind == "SlowFile" ? microseconds : 0);
        Json result = timeline(Json::array({entry(past, text(content))}));
        result["watches"] = Json::array({words, "Secrets/key", "../other", "/etc/passwd", "", 7});
        answer(request, result);
    } else if (kind == "Close") {
        close(STDOUT_FILENO);
        pause();
    } else if (kind == "Same" || kind == "Stay") {
        answer(request, timeline(Json::array({entry(past, text("same"))})));
        staysAtTheEnd = staysAtTheEnd || kind == "Stay";
    } else if (kind == "Several") {
        answer(request,
               timeline(Json::array({entry("2100-01-01T00:00:00.000Z", text("later")), entry(past, text("earlier")),
                                     entry("2001-01-03T00:00:00.000Z", text("now"))})));
    } else if (kind == "Die") {
        std::cerr << "last words" << std::endl;
        std::exit(3);
    } else if (kind == "Stop") {
        raise(SIGSTOP);
    } else if (kind == "Nonsense") {
        std::cout << "what?" << std::endl;
    } else if (kind == "Flood") {
        while (std::cout << R"({"jsonrpc":"2.0","method":"look"})" << std::endl) {
        }
    } else if (kind == "Complain") {
        std::signal(SIGPIPE, SIG_DFL);
        while (std::cerr << "complaint\n") {
        }
    } else if (kind == "Long") {
        const std::string block(1 << 20, 'x');
        while (std::cout << block << std::flush) {
        }
    } else if (kind == "Deep") {
        Json view = text("bottom");
        for (int i = 0; i < 100; ++i) {
            view = {{"type", "vstack"}, {"children", Json::array({view})}};
        }
        answer(request, timeline(Json::array({entry(past, view)})));
    } else if (kind == "NoReload") {
        answer(request, {{"entries", Json::array({entry(past, text("x"))})}});
    } else if (kind == "Refuse") {
        std::cout << Json{{"jsonrpc", "2.0"},
                          {"id", request["id"]},
                          {"error", {{"code", -32602}, {"message", "no such choice"}}}}
                         .dump()
                  << std::endl;
    }
}

} // namespace

int main() {
    for (std::string line; std::getline(std::cin, line);) {
        serve(Json::parse(line));
    }
    if (staysAtTheEnd) {
        pause();
    }
}
