#include "Host/Launcher/ProgramChoice.h"
#include "Platform/Foundation/ProgramFolder.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <string>
#include <sysexits.h>
#include <unistd.h>

namespace {

/// Whoever starts this program without standard streams would have the next file or pipe that it opens take their
/// place.
void occupyStandardStreams() {
    int lowest = 0;
    while (lowest >= 0 && lowest <= STDERR_FILENO) {
        lowest = open("/dev/null", O_RDWR);
    }
    close(lowest);
}

bool isSet(const char* variable) {
    // NOLINTNEXTLINE(concurrency-mt-unsafe): there is one thread
    const char* value = std::getenv(variable);
    return value != nullptr && *value != '\0';
}

} // namespace

int main(int argc, char** argv) {
    occupyStandardStreams();
    const std::span<const char* const> words(argv, static_cast<std::size_t>(argc));
    const bool hasDisplay = isSet("WAYLAND_DISPLAY") || isSet("DISPLAY");
    const bool isForDesktop = !words.empty() && host::asksForDesktop(words.subspan(1), hasDisplay);
    const char* name = isForDesktop ? "/widgethost-desktop" : "/widgethost-commands";
    const std::string folder = platform::programFolder();
    // Beside this program where all were built, else where they were installed.
    for (const std::string& program : {folder + name, folder + "/" WIDGETHOST_LIBEXEC + name}) {
        execv(program.c_str(), argv);
    }
    std::fprintf(stderr, "widgethost: cannot start %s: %s\n", name + 1, std::strerror(errno));
    return EX_UNAVAILABLE;
}
