// A log in memory. One thread at a time.
#pragma once

#include "Platform/Foundation/Log.h"

#include <string>
#include <vector>

namespace platform {

struct LogLine {
    LogLevel level = LogLevel::debug;
    std::string category;
    std::string message;
    friend bool operator==(const LogLine&, const LogLine&) = default;
};

class RecordingLog final : public Log {
  public:
    void write(LogLevel level, std::string_view category, std::string_view message) const override {
        lines_.push_back({level, std::string(category), std::string(message)});
    }

    const std::vector<LogLine>& lines() const { return lines_; }

  private:
    mutable std::vector<LogLine> lines_;
};

} // namespace platform
