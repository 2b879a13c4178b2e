// The system log, as an effect that is handed in.
//
// A line goes to the journal with the fields SUBSYSTEM and CATEGORY (sd_journal_print's native protocol: one datagram
// of "FIELD=value" lines to /run/systemd/journal/socket), and without a journal to syslog(3). Writing never
// fails outward, and a journal that is too busy to take a line is not waited for: the line is lost. Any thread.
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
    /// `subsystem` names the program for filters, as in "net.foliovault.widgets".
    /// `journalSocket` is where the journal listens.
    explicit SystemLog(std::string subsystem, std::string journalSocket = "/run/systemd/journal/socket")
        : subsystem_(std::move(subsystem)), journalSocket_(std::move(journalSocket)) {}
    void write(LogLevel level, std::string_view category, std::string_view message) const override;

  private:
    std::string subsystem_;
    std::string journalSocket_;
};

} // namespace platform
