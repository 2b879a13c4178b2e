// The system log, as an effect that is handed in.
//
// A line goes to the journal with the fields SUBSYSTEM and CATEGORY (sd_journal_print's native protocol: one datagram of
// "FIELD=value" lines to /run/systemd/journal/socket), and where there is no journal to syslog(3). Writing never blocks
// and never fails outward. Any thread.
#pragma once

#include <string>
#include <string_view>

namespace platform {

enum class LogLevel { debug, error };

class Log {
  public:
    virtual ~Log() = default;
    virtual void write(LogLevel level, std::string_view category, std::string_view message) const = 0;
};

class SystemLog final : public Log {
  public:
    /// `subsystem` names the program to whoever filters the log, as in "net.foliovault.widgets".
    explicit SystemLog(std::string subsystem) : subsystem_(std::move(subsystem)) {}
    void write(LogLevel level, std::string_view category, std::string_view message) const override;

  private:
    std::string subsystem_;
};

} // namespace platform
