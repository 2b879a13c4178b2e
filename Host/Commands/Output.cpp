#include "Host/Commands/Output.h"

#include "Platform/Foundation/FileDescriptor.h"

#include <fmt/format.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

namespace host {
namespace {

bool writeAll(int descriptor, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t count = write(descriptor, bytes.data(), bytes.size());
        if (count >= 0) {
            bytes.remove_prefix(static_cast<std::size_t>(count));
        } else if (errno != EINTR) {
            return false;
        }
    }
    return true;
}

Failure cannotWrite(const std::string& where) {
    return {Failure::Kind::unwritable, fmt::format("cannot write {}: {}", where, std::strerror(errno))};
}

} // namespace

std::optional<Failure> writeOutput(std::string_view bytes, const std::optional<std::filesystem::path>& file) {
    if (!file) {
        return writeAll(STDOUT_FILENO, bytes) ? std::nullopt : std::optional(cannotWrite("the output"));
    }
    // Devices and pipes are written to directly. A file is replaced by a complete one.
    std::error_code error;
    const auto status = std::filesystem::status(*file, error);
    const bool isReplaced = !std::filesystem::exists(status) || std::filesystem::is_regular_file(status);
    const std::string name = isReplaced ? fmt::format("{}.{}.new", file->string(), getpid()) : file->string();
    const platform::FileDescriptor output(
        open(name.c_str(), O_WRONLY | O_CLOEXEC | (isReplaced ? O_CREAT | O_EXCL : 0), 0666));
    if (!output.isOpen()) {
        return cannotWrite(file->string());
    }
    if (writeAll(output.get(), bytes) && (!isReplaced || rename(name.c_str(), file->c_str()) == 0)) {
        return std::nullopt;
    }
    const Failure failure = cannotWrite(file->string());
    if (isReplaced) {
        unlink(name.c_str());
    }
    return failure;
}

std::string printable(std::string text) {
    std::replace_if(
        text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < ' ' || c == '\x7F'; }, ' ');
    return text;
}

} // namespace host
