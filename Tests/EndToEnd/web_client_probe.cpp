// web_client_probe SILENCE TOTAL END ADDRESS…: downloads the addresses side by side, as the extension would, and prints
// for each, in their order, "body SIZE" and the body's bytes, or "error WORDS". The end of the input is the host's.
// The timeouts are in milliseconds. The last line is "resident SIZE", this process's memory in bytes.

#include "Platform/Foundation/WebClient.h"

#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <dlfcn.h>
#include <fstream>
#include <future>
#include <malloc.h>
#include <netdb.h>
#include <string_view>
#include <thread>
#include <unistd.h>
#include <vector>

namespace {

using platform::CurlWebClient;
using platform::Data;
using platform::URL;
using Answer = platform::Expected<Data, platform::WebError>;

void awaitEndOfInput() {
    char byte = 0;
    while (read(STDIN_FILENO, &byte, 1) > 0) {
    }
}

void print(const Answer& answer) {
    if (answer) {
        const std::string_view body = answer->bytes();
        std::printf("body %zu\n", body.size());
        std::fwrite(body.data(), 1, body.size(), stdout);
    } else {
        std::printf("error %s\n", answer.error().description.c_str());
    }
}

long residentBytes() {
    std::ifstream file("/proc/self/statm");
    long size = 0;
    long resident = 0;
    file >> size >> resident;
    return resident * sysconf(_SC_PAGESIZE);
}

} // namespace

/// Takes the C library's place: one name is nobody's, and nothing answers for another.
extern "C" int getaddrinfo(const char* name, const char* service, const addrinfo* hints, addrinfo** found) {
    if (name != nullptr && std::string_view(name) == "absent.example") {
        return EAI_NONAME;
    }
    while (name != nullptr && std::string_view(name) == "silent.example") {
        pause();
    }
    return reinterpret_cast<decltype(&::getaddrinfo)>(dlsym(RTLD_NEXT, "getaddrinfo"))(name, service, hints, found);
}

int main(int count, char** arguments) {
    std::signal(SIGPIPE, SIG_IGN);
    alarm(60); // waiting for ever is a failure
    // The heap as the extension has it.
    constexpr int keptRoom = 8 << 20;
    mallopt(M_MMAP_THRESHOLD, keptRoom);
    mallopt(M_TRIM_THRESHOLD, keptRoom);
    mallopt(M_ARENA_MAX, 1);
    const auto milliseconds = [&](int index) { return std::chrono::milliseconds(std::atoi(arguments[index])); };
    static CurlWebClient client({.silence = milliseconds(1), .total = milliseconds(2), .end = milliseconds(3)});
    std::thread([] {
        awaitEndOfInput();
        client.endSoon();
    }).detach();
    std::vector<std::future<Answer>> answers;
    for (int index = 4; index < count; ++index) {
        answers.push_back(
            std::async(std::launch::async, [address = arguments[index]] { return client.get(*URL::parse(address)); }));
    }
    for (std::future<Answer>& answer : answers) {
        print(answer.get());
    }
    std::printf("resident %ld\n", residentBytes());
}
