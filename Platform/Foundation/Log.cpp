#include "Platform/Foundation/Log.h"

#include <cerrno>
#include <cstdint>
#include <cstring>
#include <sys/socket.h>
#include <sys/un.h>
#include <syslog.h>
#include <unistd.h>

namespace platform {

namespace {

int priorityOf(LogLevel level) {
    return level == LogLevel::error ? LOG_ERR : LOG_DEBUG;
}

/// Appends a field: "NAME=value", or for a value of several lines the name, the value's length as 64 bits
/// little-endian, and the value.
void appendField(std::string& datagram, std::string_view name, std::string_view value) {
    datagram += name;
    if (value.find('\n') == std::string_view::npos) {
        datagram += '=';
    } else {
        datagram += '\n';
        const auto size = static_cast<std::uint64_t>(value.size());
        for (unsigned shift = 0; shift < 64; shift += 8) {
            datagram += static_cast<char>((size >> shift) & 0xFFU);
        }
    }
    datagram += value;
    datagram += '\n';
}

enum class Delivery { done, noJournal };

Delivery sendToJournal(const std::string& socketPath, const std::string& datagram) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (socketPath.size() >= sizeof address.sun_path) {
        return Delivery::noJournal;
    }
    std::memcpy(address.sun_path, socketPath.c_str(), socketPath.size() + 1);
    const int handle = socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    if (handle < 0) {
        return Delivery::noJournal;
    }
    const ssize_t sent = sendto(handle, datagram.data(), datagram.size(), MSG_NOSIGNAL,
                                reinterpret_cast<const sockaddr*>(&address), sizeof address);
    const bool isBusy = sent < 0 && errno == EAGAIN;
    close(handle);
    return sent >= 0 || isBusy ? Delivery::done : Delivery::noJournal;
}

} // namespace

void SystemLog::write(LogLevel level, std::string_view category, std::string_view message) const {
    std::string datagram;
    datagram.reserve(message.size() + 160);
    appendField(datagram, "MESSAGE", message);
    appendField(datagram, "PRIORITY", std::to_string(priorityOf(level)));
    appendField(datagram, "SYSLOG_IDENTIFIER", program_invocation_short_name);
    appendField(datagram, "SUBSYSTEM", subsystem_);
    appendField(datagram, "CATEGORY", category);
    if (sendToJournal(journalSocket_, datagram) == Delivery::noJournal) {
        syslog(LOG_USER | priorityOf(level), "[%s:%.*s] %.*s", subsystem_.c_str(), static_cast<int>(category.size()),
               category.data(), static_cast<int>(message.size()), message.data());
    }
}

} // namespace platform
