// A log that keeps its lines.
#pragma once

#include "Platform/Foundation/Log.h"

#include <mutex>
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
        const std::lock_guard lock(mutex_);
        lines_.push_back({level, std::string(category), std::string(message)});
    }

    std::vector<LogLine> lines() const {
        const std::lock_guard lock(mutex_);
        return lines_;
    }

  private:
    mutable std::mutex mutex_;
    mutable std::vector<LogLine> lines_;
};

} // namespace platform
