#include "Host/Commands/CommandLine.h"

#include <fcntl.h>
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

} // namespace

int main(int argc, char** argv) {
    occupyStandardStreams();
    return host::runCommandLine(argc, argv);
}
