#include "Platform/Widgets/BundleRunner.h"

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <malloc.h>
#include <poll.h>
#include <string_view>
#include <system_error>
#include <unistd.h>

namespace platform {

void BundleRunner::run() {
    serve();
    // No thread starts another once the input has ended, so the list stands still.
    threads_.clear();
}

void BundleRunner::serve() {
    while (true) {
        std::optional<LineReader::Line> line;
        {
            {
                const std::scoped_lock lock(counts_);
                ++waiting_;
            }
            const std::scoped_lock turn(turn_);
            if (!ended_) {
                line = reader_.next();
            }
            if (!line) {
                if (reader_.outputClosed()) {
                    _exit(EXIT_SUCCESS);
                }
                ended_ = true;
                return;
            }
            ensureNextReader();
        }
        if (line->tooLong) {
            write(RequestHandler::answerToTooLongLine());
        } else if (auto answer = handler_.answer(line->text)) {
            write(*std::move(answer));
        }
    }
}

void BundleRunner::ensureNextReader() {
    const std::scoped_lock lock(counts_);
    --waiting_;
    if (waiting_ > 0 || threads_.size() + 1 >= greatestConcurrency) {
        return;
    }
    try {
        threads_.emplace_back([this] { serve(); });
    } catch (const std::system_error&) {
        // No thread to be had: this one reads on when it has answered.
    }
}

void BundleRunner::write(std::string answer) {
    answer += '\n';
    const std::scoped_lock lock(writing_);
    for (std::string_view rest = answer; !rest.empty();) {
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
    // A large file's buffer goes back to the system with its request, and threads do not keep heaps of their own.
    mallopt(M_MMAP_THRESHOLD, 128 << 10);
    mallopt(M_ARENA_MAX, 1);
    BundleRunner(bundle, STDIN_FILENO, STDOUT_FILENO).run();
    return EXIT_SUCCESS;
}

} // namespace platform
