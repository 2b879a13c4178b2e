#include "Host/Commands/CommandLine.h"

#include <fcntl.h>
#include <unistd.h>

namespace {

/// Opens missing standard streams, so that no file or connection gets their numbers.
void openStandardStreams() {
    int lowest = 0;
    while (lowest >= 0 && lowest <= STDERR_FILENO) {
        lowest = open("/dev/null", O_RDWR);
    }
    close(lowest);
}

} // namespace

int main(int argc, char** argv) {
    openStandardStreams();
    return host::runCommandLine(argc, argv);
}
