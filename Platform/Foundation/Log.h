// The system log, as an effect that is passed in.
//
// A line is sent to the journal with the fields SUBSYSTEM and CATEGORY (its native protocol: one datagram of
// "FIELD=value" lines to /run/systemd/journal/socket), without a journal to syslog(3). Reports no errors and does not
// wait: a line for a busy journal is lost. Any thread.
#pragma once

#include <string>
#include <string_view>
#include <utility>

namespace platform {

enum class LogLevel { debug, error };

class Log {
  public:
    virtual ~Log() = default;
    virtual void write(LogLevel level, std::string_view category, std::string_view message) const = 0;
};

class SystemLog final : public Log {
  public:
    /// `subsystem` names the program for filters, as in "net.foliovault.widgets". `journalSocket` is the journal's
    /// path.
    explicit SystemLog(std::string subsystem, std::string journalSocket = "/run/systemd/journal/socket")
        : subsystem_(std::move(subsystem)), journalSocket_(std::move(journalSocket)) {}
    void write(LogLevel level, std::string_view category, std::string_view message) const override;

  private:
    std::string subsystem_;
    std::string journalSocket_;
};

} // namespace platform
