#include "Host/Commands/DesktopCommandLine.h"

int main(int argc, char** argv) {
    return host::runDesktopCommandLine(argc, argv);
}
