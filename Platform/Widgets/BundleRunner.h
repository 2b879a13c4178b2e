// The extension's end of the connection: takes lines, answers them concurrently, and ends as the protocol says.
//
// Threads take turns at reading: the one that gets a line answers it itself, and sees to it first that another is there
// to read on. So a quick answer is never handed between threads, and a slow one holds nobody up.
#pragma once

#include "Platform/Widgets/LineReader.h"
#include "Platform/Widgets/RequestHandler.h"

#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace platform {

class BundleRunner {
  public:
    /// Answers at once, at most. More requests wait for one of these.
    static constexpr std::size_t greatestConcurrency = 64;

    BundleRunner(const WidgetBundle& bundle, int input, int output)
        : handler_(bundle), reader_(input, output), output_(output) {}

    /// Serves until the end of input and of everything accepted before it. When the output is closed, nobody waits for
    /// what is still being worked on: the process ends at once, with 0.
    void run();

  private:
    void serve();
    void ensureNextReader();
    void write(std::string answer);

    RequestHandler handler_;
    LineReader reader_;
    int output_;

    /// Held by the thread that reads, and by those that wait for their turn.
    std::mutex turn_;
    bool ended_ = false;

    std::mutex counts_;
    std::size_t waiting_ = 0;
    std::vector<std::jthread> threads_;

    std::mutex writing_;
};

} // namespace platform
