#include "Host/Session/FileWatcher.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <cstring>
#include <deque>
#include <sys/inotify.h>
#include <sys/stat.h>
#include <unistd.h>

namespace host {
namespace {

using platform::Date;

constexpr std::uint32_t folderMask =
    IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO | IN_ATTRIB | IN_DELETE_SELF | IN_MOVE_SELF | IN_ONLYDIR;
/// A file that was just made may be closed before it is watched itself.
constexpr std::uint32_t lastFolderMask = folderMask | IN_CLOSE_WRITE;
/// A folder that is followed itself changes with the names in it.
constexpr std::uint32_t contentMask = IN_MODIFY | IN_CLOSE_WRITE | IN_ATTRIB | IN_CREATE | IN_DELETE | IN_MOVED_FROM |
                                      IN_MOVED_TO | IN_DELETE_SELF | IN_MOVE_SELF;
constexpr std::uint32_t placeMask = IN_IGNORED | IN_UNMOUNT | IN_DELETE_SELF | IN_MOVE_SELF;
/// As many as the kernel follows.
constexpr int maxLinks = 40;

std::deque<std::string> namesOf(std::string_view path) {
    std::deque<std::string> names;
    while (!path.empty()) {
        const std::size_t end = std::min(path.find('/'), path.size());
        if (const auto name = path.substr(0, end); !name.empty() && name != ".") {
            names.emplace_back(name);
        }
        path.remove_prefix(std::min(end + 1, path.size()));
    }
    return names;
}

bool isFolder(const std::string& path) {
    struct stat status {};
    return stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

Date changeDate(const struct stat& status) {
    constexpr double nanosecondsPerSecond = 1e9;
    return Date::fromUnixTime(static_cast<double>(status.st_ctim.tv_sec) +
                              static_cast<double>(status.st_ctim.tv_nsec) / nanosecondsPerSecond);
}

std::string linkTarget(const std::string& path) {
    std::array<char, PATH_MAX> text{};
    const ssize_t length = readlink(path.c_str(), text.data(), text.size());
    return {text.data(), static_cast<std::size_t>(std::max<ssize_t>(length, 0))};
}

} // namespace

FileWatcher::FileWatcher(std::string base, std::chrono::milliseconds settleTime)
    : base_(std::move(base)), settleTime_(settleTime), inotify_(inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {
    if (!inotify_.isOpen()) {
        failure_ = fmt::format("files cannot be followed: {}", strerrordesc_np(errno));
    }
}

void FileWatcher::follow(const std::set<std::string>& paths) {
    const auto removed = std::erase_if(targets_, [&](const auto& each) { return !paths.contains(each.first); });
    bool isChanged = removed > 0;
    for (const std::string& path : paths) {
        isChanged = targets_.try_emplace(path, Target{.path = path}).second || isChanged;
    }
    if (isChanged) {
        rebuild();
    }
}

void FileWatcher::dispatch(Time now) {
    constexpr std::size_t bufferSize = std::size_t{64} << 10U;
    alignas(inotify_event) std::array<char, bufferSize> buffer; // NOLINT(*-member-init): read fills it
    ssize_t size = 0;
    while ((size = read(inotify_.get(), buffer.data(), buffer.size())) > 0) {
        for (const char *next = buffer.data(), *end = next + size; next < end;) {
            inotify_event event{};
            std::memcpy(&event, next, sizeof event);
            // The name is filled up with zeros.
            const char* const name = next + sizeof event;
            handle(event, event.len == 0 ? std::string_view() : std::string_view(name), now);
            next = name + event.len;
        }
    }
    if (std::exchange(needsRebuild_, false)) {
        // Before anybody is told: who reads afterwards reads what is followed.
        rebuildAndCompare(now);
    }
}

void FileWatcher::handle(const inotify_event& event, std::string_view name, Time now) {
    if ((event.mask & IN_Q_OVERFLOW) != 0) {
        for (auto& [path, target] : targets_) {
            settle(target);
        }
        needsRebuild_ = true;
        return;
    }
    const auto known = watches_.find(event.wd);
    if (known == watches_.end()) {
        return;
    }
    const Watch& watch = known->second;
    if ((event.mask & placeMask) != 0) {
        needsRebuild_ = true;
        return;
    }
    const auto [first, last] = watch.names.equal_range(name);
    for (auto each = first; each != last; ++each) {
        nameChanged(*each->second, event.mask, now);
    }
    for (Target* target : watch.contents) {
        contentChanged(*target, event.mask, now);
    }
}

/// A name on the way to the target, or its own.
void FileWatcher::nameChanged(Target& target, std::uint32_t mask, Time now) {
    if ((mask & IN_CLOSE_WRITE) != 0) {
        contentChanged(target, mask, now);
        return;
    }
    needsRebuild_ = true;
    if ((mask & IN_ATTRIB) != 0) {
        attributesChanged(target, now);
    } else if ((mask & IN_MOVED_TO) != 0) {
        settle(target);
    } else {
        postpone(target, now);
    }
}

void FileWatcher::contentChanged(Target& target, std::uint32_t mask, Time now) {
    if ((mask & IN_MODIFY) != 0) {
        postpone(target, now);
        target.lastWrite = now;
        target.isWritten = true;
    } else if ((mask & IN_ATTRIB) != 0) {
        attributesChanged(target, now);
    } else if ((mask & IN_CLOSE_WRITE) == 0 || target.pending != Pending::none) {
        // Both the folder and the file tell of the same close.
        settle(target);
    }
}

void FileWatcher::attributesChanged(Target& target, Time now) {
    if (target.pending != Pending::none) {
        return;
    }
    // The number of its links is an attribute, too: a file that is removed tells of that first.
    if (access(target.path.c_str(), F_OK) == 0) {
        settle(target);
    } else {
        postpone(target, now);
    }
}

void FileWatcher::settle(Target& target) {
    target.pending = Pending::none;
    target.isWritten = false;
    target.hasChanged = true;
}

void FileWatcher::postpone(Target& target, Time now) {
    target.pending = Pending::untilDeadline;
    target.isWritten = false;
    target.hasChanged = false;
    target.deadline = now + settleTime_;
}

void FileWatcher::expire(Target& target) {
    struct stat status {};
    const bool isCut =
        target.isWritten && stat(target.path.c_str(), &status) == 0 && S_ISREG(status.st_mode) && status.st_size == 0;
    if (isCut) {
        target.pending = Pending::untilClosed;
    } else {
        settle(target);
    }
}

std::vector<std::string> FileWatcher::takeChanged(Time now) {
    std::vector<std::string> changed;
    for (auto& [path, target] : targets_) {
        if (target.pending == Pending::untilDeadline && target.deadline <= now) {
            expire(target);
        }
        if (std::exchange(target.hasChanged, false)) {
            changed.push_back(path);
        }
    }
    return changed;
}

std::optional<FileWatcher::Time> FileWatcher::deadline() const {
    std::optional<Time> earliest;
    for (const auto& [path, target] : targets_) {
        if (target.pending == Pending::untilDeadline) {
            earliest = std::min(earliest.value_or(target.deadline), target.deadline);
        }
    }
    return earliest;
}

bool FileWatcher::isUnsettledSince(const std::string& path, Time time) const {
    const auto known = targets_.find(path);
    return known != targets_.end() && (known->second.pending != Pending::none || known->second.lastWrite >= time);
}

bool FileWatcher::hasChangedSince(const std::string& path, Date date) const {
    // The kernel's own times lie back by as much as its clock ticks.
    constexpr double tick = 0.02;
    const auto known = targets_.find(path);
    return known != targets_.end() && known->second.newestChange.addingSeconds(tick) >= date;
}

/// Watches what leads to every path as it is now, and nothing else.
void FileWatcher::rebuild() {
    if (!inotify_.isOpen()) {
        return;
    }
    failure_.reset();
    std::map<int, Watch> watches;
    for (auto& [path, target] : targets_) {
        walk(target, watches);
    }
    for (const auto& [number, watch] : watches_) {
        if (!watches.contains(number)) {
            inotify_rm_watch(inotify_.get(), number);
        }
    }
    watches_ = std::move(watches);
}

/// The same, and counts what no event told of: another file of that name, such as one of a home that was replaced.
void FileWatcher::rebuildAndCompare(Time now) {
    std::map<std::string, std::optional<Identity>> before;
    for (const auto& [path, target] : targets_) {
        before.emplace(path, target.identity);
    }
    rebuild();
    for (auto& [path, target] : targets_) {
        if (target.identity == before.at(path) || target.pending != Pending::none) {
            continue;
        }
        if (target.identity) {
            settle(target);
        } else {
            postpone(target, now);
        }
    }
}

void FileWatcher::walk(Target& target, std::map<int, Watch>& watches) {
    std::string folder = isFolder(base_) ? base_ : "/";
    std::deque<std::string> names = namesOf(std::string_view(target.path).substr(folder.size()));
    target.newestChange = Date::distantPast();
    target.identity.reset();
    for (int links = 0; !names.empty() && links <= maxLinks;) {
        const std::string name = std::move(names.front());
        names.pop_front();
        // Watched before it is looked into: what changes after the look is an event.
        if (Watch* const watch = add(folder, names.empty() ? lastFolderMask : folderMask, watches)) {
            watch->names.emplace(name, &target);
        }
        const std::string next = fmt::format("{}/{}", folder, name);
        struct stat status {};
        if (lstat(next.c_str(), &status) != 0) {
            return;
        }
        target.newestChange = std::max(target.newestChange, changeDate(status));
        if (S_ISLNK(status.st_mode)) {
            ++links;
            const std::string link = linkTarget(next);
            const std::deque<std::string> linked = namesOf(link);
            names.insert(names.begin(), linked.begin(), linked.end());
            folder = link.starts_with('/') ? "/" : folder;
        } else if (!names.empty()) {
            folder = next;
        } else {
            target.identity = {status.st_dev, status.st_ino};
            if (Watch* const watch = add(next, contentMask, watches)) {
                watch->contents.insert(&target);
            }
        }
    }
}

FileWatcher::Watch* FileWatcher::add(const std::string& path, std::uint32_t mask, std::map<int, Watch>& watches) {
    // Added to what it may be watched for already, as a part of another path.
    const int number = inotify_add_watch(inotify_.get(), path.c_str(), mask | IN_MASK_ADD);
    if (number < 0) {
        if (errno == ENOSPC || errno == ENOMEM) {
            failure_ = "the kernel's inotify watches are used up: changes of files are seen at the next reload only";
        }
        return nullptr;
    }
    return &watches[number];
}

} // namespace host
