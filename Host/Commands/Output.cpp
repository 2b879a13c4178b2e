#include "Host/Commands/Output.h"

#include <fmt/format.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

namespace host {
namespace {

bool writeAll(int descriptor, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t count = write(descriptor, bytes.data(), bytes.size());
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count < 0) {
            return false;
        }
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    return true;
}

Failure cannotWrite(const std::string& where) {
    return {Failure::Kind::unwritable, fmt::format("cannot write {}: {}", where, std::strerror(errno))};
}

/// Devices and pipes are written to as they are; a file is replaced by one that is complete.
bool isReplaceable(const std::filesystem::path& file) {
    std::error_code failure;
    const auto status = std::filesystem::status(file, failure);
    return !std::filesystem::exists(status) || std::filesystem::is_regular_file(status);
}

} // namespace

std::optional<Failure> writeOutput(std::string_view bytes, const std::optional<std::filesystem::path>& file) {
    if (!file) {
        return writeAll(STDOUT_FILENO, bytes) ? std::nullopt : std::optional(cannotWrite("the output"));
    }
    const bool replaceable = isReplaceable(*file);
    std::string name = file->string() + (replaceable ? ".XXXXXX" : "");
    const int descriptor = replaceable ? mkostemp(name.data(), O_CLOEXEC) : open(name.c_str(), O_WRONLY | O_CLOEXEC);
    if (descriptor < 0) {
        return cannotWrite(file->string());
    }
    const mode_t mask = umask(0);
    umask(mask);
    const bool written = writeAll(descriptor, bytes) && (!replaceable || fchmod(descriptor, 0666 & ~mask) == 0);
    const bool closed = close(descriptor) == 0;
    if (written && closed && (!replaceable || rename(name.c_str(), file->c_str()) == 0)) {
        return std::nullopt;
    }
    const Failure failure = cannotWrite(file->string());
    if (replaceable) {
        unlink(name.c_str());
    }
    return failure;
}

} // namespace host
