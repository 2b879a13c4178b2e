#include "Host/Session/FileWatcher.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <deque>
#include <filesystem>
#include <sys/inotify.h>
#include <sys/stat.h>
#include <unistd.h>

namespace host {
namespace {

namespace fs = std::filesystem;
using platform::Date;

constexpr std::uint32_t folderMask =
    IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO | IN_ATTRIB | IN_DELETE_SELF | IN_MOVE_SELF | IN_ONLYDIR;
/// A new file may be closed before it has a watch of its own.
constexpr std::uint32_t lastFolderMask = folderMask | IN_CLOSE_WRITE;
/// A followed path may be a folder, which changes with the names in it.
constexpr std::uint32_t contentMask = IN_MODIFY | IN_CLOSE_WRITE | IN_ATTRIB | IN_CREATE | IN_DELETE | IN_MOVED_FROM |
                                      IN_MOVED_TO | IN_DELETE_SELF | IN_MOVE_SELF;
constexpr std::uint32_t placeMask = IN_IGNORED | IN_UNMOUNT | IN_DELETE_SELF | IN_MOVE_SELF;
/// The kernel's own limit.
constexpr int maxLinks = 40;

std::deque<std::string> namesOf(const fs::path& path) {
    std::deque<std::string> names;
    for (const fs::path& name : path.relative_path()) {
        if (!name.empty() && name != ".") {
            names.push_back(name);
        }
    }
    return names;
}

Date changeDate(const struct stat& status) {
    constexpr double nanosecondsPerSecond = 1e9;
    return Date::fromUnixTime(static_cast<double>(status.st_ctim.tv_sec) +
                              static_cast<double>(status.st_ctim.tv_nsec) / nanosecondsPerSecond);
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
        rebuild(std::nullopt);
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
            // The name is padded with zeros.
            const char* const name = next + sizeof event;
            handle(event, event.len == 0 ? std::string_view() : std::string_view(name), now);
            next = name + event.len;
        }
    }
    if (std::exchange(needsRebuild_, false)) {
        // Before the changes are returned, so that the caller reads what is followed.
        rebuild(now);
    }
}

void FileWatcher::handle(const inotify_event& event, std::string_view name, Time now) {
    if ((event.mask & IN_Q_OVERFLOW) != 0) {
        for (auto& [path, target] : targets_) {
            markChanged(target);
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

/// Handles an event of a name on the way to the target, or of its own name.
void FileWatcher::nameChanged(Target& target, std::uint32_t mask, Time now) {
    if ((mask & IN_CLOSE_WRITE) != 0) {
        contentChanged(target, mask, now);
        return;
    }
    needsRebuild_ = true;
    if ((mask & IN_ATTRIB) != 0) {
        attributesChanged(target, now);
    } else if ((mask & IN_MOVED_TO) != 0) {
        markChanged(target);
    } else {
        postpone(target, Pending::replaced, now);
    }
}

void FileWatcher::contentChanged(Target& target, std::uint32_t mask, Time now) {
    if ((mask & IN_MODIFY) != 0) {
        postpone(target, Pending::written, now);
        target.lastWrite = now;
    } else if ((mask & IN_ATTRIB) != 0) {
        attributesChanged(target, now);
    } else if ((mask & IN_CLOSE_WRITE) == 0 || target.pending != Pending::none) {
        // The same close is an event of the folder and one of the file.
        markChanged(target);
    }
}

void FileWatcher::attributesChanged(Target& target, Time now) {
    if (target.pending != Pending::none) {
        return;
    }
    // Removing a file changes its number of links, an attribute, and is reported as that first.
    if (access(target.path.c_str(), F_OK) == 0) {
        markChanged(target);
    } else {
        postpone(target, Pending::replaced, now);
    }
}

void FileWatcher::markChanged(Target& target) {
    target.pending = Pending::none;
    target.hasChanged = true;
}

void FileWatcher::postpone(Target& target, Pending pending, Time now) {
    target.pending = pending;
    target.hasChanged = false;
    target.deadline = now + settleTime_;
}

std::vector<std::string> FileWatcher::takeChanged(Time now) {
    std::vector<std::string> changed;
    for (auto& [path, target] : targets_) {
        if (hasDeadline(target) && target.deadline <= now) {
            std::error_code failure;
            if (target.pending == Pending::written && fs::is_regular_file(path, failure) &&
                fs::file_size(path, failure) == 0) {
                target.pending = Pending::truncated;
            } else {
                markChanged(target);
            }
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
        if (hasDeadline(target)) {
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
    // File times lag behind by up to a tick of the kernel's clock.
    constexpr double tick = 0.02;
    const auto known = targets_.find(path);
    return known != targets_.end() && known->second.newestChange.addingSeconds(tick) >= date;
}

/// Watches the folders on the way to every path as it is now, and nothing else. With `now`, counts a path that has
/// become another file without an event, as when a folder above the base was replaced.
void FileWatcher::rebuild(std::optional<Time> now) {
    if (!inotify_.isOpen()) {
        return;
    }
    failure_.reset();
    std::map<int, Watch> watches;
    for (auto& [path, target] : targets_) {
        const auto before = std::exchange(target.identity, std::nullopt);
        walk(target, watches);
        if (!now || target.identity == before || target.pending != Pending::none) {
            continue;
        }
        if (target.identity) {
            markChanged(target);
        } else {
            postpone(target, Pending::replaced, *now);
        }
    }
    for (const auto& [number, watch] : watches_) {
        if (!watches.contains(number)) {
            inotify_rm_watch(inotify_.get(), number);
        }
    }
    watches_ = std::move(watches);
}

void FileWatcher::walk(Target& target, std::map<int, Watch>& watches) {
    std::error_code failure;
    std::string folder = fs::is_directory(base_, failure) ? base_ : "/";
    std::deque<std::string> names = namesOf(target.path.substr(folder.size()));
    target.newestChange = Date::distantPast();
    for (int links = 0; !names.empty() && links <= maxLinks;) {
        const std::string name = std::move(names.front());
        names.pop_front();
        // Before `lstat`, so that every later change is an event.
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
            const fs::path link = fs::read_symlink(next, failure);
            const std::deque<std::string> linked = namesOf(link);
            names.insert(names.begin(), linked.begin(), linked.end());
            folder = link.is_absolute() ? "/" : folder;
        } else if (!names.empty()) {
            folder = next;
        } else {
            target.identity = std::pair(status.st_dev, status.st_ino);
            if (Watch* const watch = add(next, contentMask, watches)) {
                watch->contents.insert(&target);
            }
        }
    }
}

FileWatcher::Watch* FileWatcher::add(const std::string& path, std::uint32_t mask, std::map<int, Watch>& watches) {
    // The inode may have a watch already, as a part of another path.
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
