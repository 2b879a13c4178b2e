#include "Host/Commands/MachineChecks.h"

#include "Platform/Foundation/FileDescriptor.h"
#include "Platform/Foundation/Releaser.h"

#include <fmt/format.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <sys/stat.h>

namespace host {
namespace {

using platform::FileDescriptor;

constexpr int maxEntries = 10'000;
constexpr std::size_t maxNamed = 3;

struct Access {
    bool isFile = false;
    /// An errno if it cannot be read, else 0. Also 0 for anything but a regular file.
    int error = 0;
};

Access accessTo(int folder, const char* name) {
    struct stat status {};
    if (fstatat(folder, name, &status, 0) != 0) {
        return {.error = errno};
    }
    if (!S_ISREG(status.st_mode)) {
        return {};
    }
    // O_NONBLOCK: a pipe may have replaced the file by now.
    const FileDescriptor file(openat(folder, name, O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    return {.isFile = true, .error = file.isOpen() ? 0 : errno};
}

Finding problem(std::string what, std::string fix) {
    return Finding::problem("data", std::move(what), std::move(fix));
}

Finding unreachable(const std::string& path, int error) {
    std::string what = fmt::format("{}: {}", path, std::strerror(error)); // NOLINT(concurrency-mt-unsafe)
    if (error == ENOENT) {
        return problem(std::move(what), "start the application once, so that it creates its library");
    }
    return problem(std::move(what), error == ENOTDIR ? "move away the file that is in the folder's place"
                                                     : "make it accessible: chmod u+rwx");
}

Finding checkFolder(const std::string& path) {
    // O_NONBLOCK: a pipe may be in the folder's place.
    const int descriptor = open(path.c_str(), O_RDONLY | O_DIRECTORY | O_NONBLOCK | O_CLOEXEC);
    const std::unique_ptr<DIR, platform::Releaser<closedir>> folder(descriptor < 0 ? nullptr : fdopendir(descriptor));
    if (!folder) {
        return unreachable(path, errno);
    }
    int files = 0;
    std::vector<std::string> unreadable;
    int seen = 0;
    // NOLINTNEXTLINE(concurrency-mt-unsafe): no other thread reads this folder's stream
    for (const dirent* entry = readdir(folder.get()); entry != nullptr && seen++ < maxEntries;
         entry = readdir(folder.get())) { // NOLINT(concurrency-mt-unsafe)
        const Access access = accessTo(descriptor, entry->d_name);
        if (access.error != 0) {
            unreadable.push_back(
                fmt::format("{} ({})", entry->d_name, std::strerror(access.error))); // NOLINT(*-mt-unsafe)
        }
        files += access.isFile ? 1 : 0;
    }
    if (!unreadable.empty()) {
        const std::size_t more = unreadable.size() - std::min(unreadable.size(), maxNamed);
        unreadable.resize(unreadable.size() - more);
        return problem(fmt::format("{}: not readable: {}{}", path, fmt::join(unreadable, ", "),
                                   more == 0 ? "" : fmt::format(" and {} more", more)),
                       "make them readable (chmod u+r), or correct links that lead nowhere");
    }
    if (files == 0) {
        return Finding::note("data", path + ": contains no files", "add something in the application");
    }
    return Finding::ok("data", fmt::format("{}: {} file{}, readable", path, files, files == 1 ? "" : "s"));
}

} // namespace

Findings checkData(const Manifest& manifest, const std::filesystem::path& home) {
    if (!home.is_absolute()) {
        return {problem("the user database names no home for this user", "set one with usermod --home")};
    }
    Findings findings;
    for (const std::string& folder : manifest.reads) {
        findings.push_back(checkFolder(home / folder));
    }
    return findings;
}

} // namespace host
