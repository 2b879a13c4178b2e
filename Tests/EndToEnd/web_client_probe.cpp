// web_client_probe SILENCE TOTAL END ADDRESS: downloads the address as the extension would, and prints "body " and the
// body, or "error " and its description. The end of the input is the host's. The timeouts are in milliseconds.

#include "Platform/Foundation/WebClient.h"

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <dlfcn.h>
#include <iostream>
#include <netdb.h>
#include <string_view>
#include <thread>
#include <unistd.h>

/// Replaces the C library's: one name does not exist, and for another it never returns.
extern "C" int getaddrinfo(const char* name, const char* service, const addrinfo* hints, addrinfo** found) {
    if (name != nullptr && std::string_view(name) == "absent.example") {
        return EAI_NONAME;
    }
    while (name != nullptr && std::string_view(name) == "silent.example") {
        pause();
    }
    return reinterpret_cast<decltype(&::getaddrinfo)>(dlsym(RTLD_NEXT, "getaddrinfo"))(name, service, hints, found);
}

int main(int /*count*/, char** arguments) {
    std::signal(SIGPIPE, SIG_IGN);
    alarm(60); // A download that does not end fails.
    const auto milliseconds = [&](int index) { return std::chrono::milliseconds(std::atoi(arguments[index])); };
    static platform::CurlWebClient client(
        {.silence = milliseconds(1), .total = milliseconds(2), .end = milliseconds(3)});
    std::thread([] {
        char byte = 0;
        while (read(STDIN_FILENO, &byte, 1) > 0) {
        }
        client.endSoon();
    }).detach();
    if (const auto body = client.get(*platform::URL::parse(arguments[4]))) {
        std::cout << "body " << body->bytes();
    } else {
        std::cout << "error " << body.error().description;
    }
}
