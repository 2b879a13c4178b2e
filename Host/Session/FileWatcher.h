// Follows files by inotify, whatever becomes of them: written in place, replaced, removed, made anew, reached by links.
//
// A path is followed whether it exists or not. Watched are the folders that lead to it as far as they exist, from the
// base folder on, for the next name on the way alone; and the file itself, so that a write by another hard link is
// seen, while writes to other files in its folder wake nothing. Symbolic links are followed. Nothing is polled.
//
// A change counts
//  - at once when the file is closed after writing, renamed into its place or touched,
//  - 200 ms after the last write while it stays open, but not while it is empty: it was cut to be written anew,
//  - 200 ms after it was removed or created, unless it is closed or replaced before.
//
// It has no loop and no timer: the caller waits for `descriptor` and for `deadline`, and calls `dispatch`. File systems
// without notification (FUSE, NFS) report nothing. One thread.
#pragma once

#include "Platform/Foundation/Date.h"
#include "Platform/Foundation/FileDescriptor.h"

#include <chrono>
#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <sys/types.h>
#include <vector>

struct inotify_event;

namespace host {

class FileWatcher {
  public:
    using Time = std::chrono::steady_clock::time_point;

    /// Requires an absolute path as the base; changes above that folder are not noticed while it exists.
    explicit FileWatcher(std::string base, std::chrono::milliseconds settleTime = std::chrono::milliseconds(200));

    /// Readable when something happened; -1 if the kernel gives no descriptor.
    int descriptor() const { return inotify_.get(); }

    /// Follows these paths and no others from now on. Requires absolute paths below the base. What is pending for a
    /// path that is followed already stays so.
    void follow(const std::set<std::string>& paths);

    /// Reads what happened.
    void dispatch(Time now);
    /// The paths whose changes count by now, each once.
    std::vector<std::string> takeChanged(Time now);
    /// When `takeChanged` has something next without any further event.
    std::optional<Time> deadline() const;

    /// Whether the file is being written, or was written since `time`: what was read meanwhile may be half of it.
    bool isUnsettledSince(const std::string& path, Time time) const;
    /// Whether the file, or a folder on the way to it, has changed at `date` or later, by the times that the file
    /// system keeps: for a path that was not followed then.
    bool hasChangedSince(const std::string& path, platform::Date date) const;

    /// In one line, why some changes will not be noticed.
    const std::optional<std::string>& failure() const { return failure_; }
    std::size_t watchCount() const { return watches_.size(); }

  private:
    enum class Pending { none, untilDeadline, untilClosed };
    /// Which file it is, and not only its name.
    struct Identity {
        dev_t device = 0;
        ino_t inode = 0;
        bool operator==(const Identity&) const = default;
    };
    struct Target {
        std::string path;
        Pending pending = Pending::none;
        /// Whether the last that happened was a write by somebody who has not closed the file yet.
        bool isWritten = false;
        Time deadline;
        std::optional<Time> lastWrite;
        platform::Date newestChange;
        std::optional<Identity> identity;
        bool hasChanged = false;
    };
    /// What one kernel watch is for. One inode has one watch, whatever the paths to it are.
    struct Watch {
        std::multimap<std::string, Target*, std::less<>> names;
        std::set<Target*> contents;
    };

    void handle(const inotify_event& event, std::string_view name, Time now);
    void nameChanged(Target& target, std::uint32_t mask, Time now);
    void contentChanged(Target& target, std::uint32_t mask, Time now);
    void attributesChanged(Target& target, Time now);
    static void settle(Target& target);
    void postpone(Target& target, Time now);
    static void expire(Target& target);
    void rebuild();
    void rebuildAndCompare(Time now);
    void walk(Target& target, std::map<int, Watch>& watches);
    Watch* add(const std::string& path, std::uint32_t mask, std::map<int, Watch>& watches);

    std::string base_;
    std::chrono::milliseconds settleTime_;
    platform::FileDescriptor inotify_;
    /// By path.
    std::map<std::string, Target> targets_;
    /// By the kernel's number.
    std::map<int, Watch> watches_;
    bool needsRebuild_ = false;
    std::optional<std::string> failure_;
};

} // namespace host
