// The extension's end of the connection: reads requests and writes answers, a line each.
//
// One thread reads and answers. It waits for the host alone: a widget that must wait for something answers later on a
// thread of its own, so that any number of such requests delays no other, nor the end of input.
#pragma once

#include "Platform/Widgets/LineReader.h"
#include "Platform/Widgets/RequestHandler.h"

#include <mutex>
#include <string>

namespace platform {

class BundleRunner {
  public:
    /// `bundle` must outlive the runner.
    BundleRunner(const WidgetBundle& bundle, int input, int output)
        : bundle_(bundle), handler_(bundle), reader_(input, output), output_(output) {}

    /// Serves until the end of input and of everything accepted before it. When the output is closed, the process
    /// ends at once with 0, without the answers that are still to come.
    void run();

  private:
    /// Any thread.
    void write(std::string answer);

    const WidgetBundle& bundle_;
    RequestHandler handler_;
    LineReader reader_;
    int output_;
    std::mutex writing_;
};

} // namespace platform
