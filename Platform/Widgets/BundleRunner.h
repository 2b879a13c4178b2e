// The extension's end of the connection: reads requests and writes responses, one on each line.
//
// One thread reads and responds. A widget that must wait responds later on a thread of its own, so that such requests
// delay no others, nor the end of input.
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

    /// Serves until the end of input and all requests before it. If the output is closed, the process exits at once
    /// with 0, without the remaining responses.
    void run();

  private:
    /// Any thread.
    void write(std::string response);

    const WidgetBundle& bundle_;
    RequestHandler handler_;
    LineReader reader_;
    int output_;
    std::mutex writing_;
};

} // namespace platform
