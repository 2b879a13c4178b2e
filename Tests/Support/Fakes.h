// A user, a clock, a log and a web in memory. One thread at a time.
#pragma once

#include "Platform/Foundation/Clock.h"
#include "Platform/Foundation/Log.h"
#include "Platform/Foundation/UserDatabase.h"
#include "Platform/Foundation/WebClient.h"

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace platform {

class FakeUserDatabase final : public UserDatabase {
  public:
    explicit FakeUserDatabase(std::optional<std::string> recordedHome, std::string processHome = "/")
        : recordedHome_(std::move(recordedHome)), processHome_(std::move(processHome)) {}

    std::optional<std::string> recordedHome() const override { return recordedHome_; }
    std::string processHome() const override { return processHome_; }

  private:
    std::optional<std::string> recordedHome_;
    std::string processHome_;
};

struct FixedClock final : Clock {
    Date date;
    explicit FixedClock(Date fixed) : date(fixed) {}
    Date now() const override { return date; }
};

struct LogLine {
    LogLevel level = LogLevel::debug;
    std::string category;
    std::string message;
    friend bool operator==(const LogLine&, const LogLine&) = default;
};

struct RecordingLog final : Log {
    mutable std::vector<LogLine> lines;
    void write(LogLevel level, std::string_view category, std::string_view message) const override {
        lines.push_back({level, std::string(category), std::string(message)});
    }
};

struct MemoryWebClient final : WebClient {
    /// Bodies by address.
    std::map<std::string, std::string> pages;
    /// Why every download fails.
    std::optional<std::string> failure;
    /// Called in every download, on its thread.
    std::function<void()> whileLoading;
    /// The addresses of all downloads, in their order.
    mutable std::vector<std::string> requests;

    Expected<Data, WebError> get(const URL& address) const override {
        if (whileLoading) {
            whileLoading();
        }
        requests.push_back(address.absoluteString());
        const auto page = pages.find(address.absoluteString());
        if (failure || page == pages.end()) {
            return Unexpected{WebError{failure.value_or("Could not resolve host: " + address.host().value_or(""))}};
        }
        return Data::owning(page->second);
    }
};

} // namespace platform
