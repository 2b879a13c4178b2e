#include "Platform/Widgets/BundleRunner.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <poll.h>
#include <string_view>
#include <unistd.h>
#include <utility>

namespace platform {

void BundleRunner::run() {
    const RequestHandler::Reply reply = [this](std::string response) { write(std::move(response)); };
    while (const auto line = reader_.next()) {
        if (line->tooLong) {
            reply(RequestHandler::responseToTooLongLine());
        } else {
            handler_.handle(line->text, reply);
        }
    }
    if (reader_.outputClosed()) {
        _exit(EXIT_SUCCESS);
    }
    if (bundle_.inputEnded) {
        bundle_.inputEnded();
    }
}

void BundleRunner::write(std::string response) {
    response += '\n';
    const std::scoped_lock lock(writing_);
    for (std::string_view rest = response; !rest.empty();) {
        const ssize_t count = ::write(output_, rest.data(), rest.size());
        if (count >= 0) {
            rest.remove_prefix(static_cast<std::size_t>(count));
        } else if (errno == EAGAIN) {
            pollfd writable{output_, POLLOUT, 0};
            poll(&writable, 1, -1);
        } else if (errno != EINTR) {
            _exit(EXIT_SUCCESS);
        }
    }
}

int runBundle(const WidgetBundle& bundle) {
    std::signal(SIGPIPE, SIG_IGN);
    if (isatty(STDIN_FILENO) != 0) {
        std::fputs(
            "This is a widget extension: a widget host starts it, and speaks JSON-RPC with it, a message a line.\n",
            stderr);
    }
    BundleRunner(bundle, STDIN_FILENO, STDOUT_FILENO).run();
    return EXIT_SUCCESS;
}

} // namespace platform
