// Follows files by inotify, also those that do not exist yet, are removed and made again, or are reached by links.
//
// For each path it watches the folders that lead to it, as far as they exist, from the base folder on, each for the
// next name only. It also watches the file itself: this notices writes by another hard link, and ignores writes to
// other files in the folder. Symbolic links are followed. Nothing is polled.
//
// A change counts
//  - at once when the file is closed after writing, renamed into its place or touched,
//  - 200 ms after the last write while it stays open, but not while it is empty: it was truncated to be rewritten,
//  - 200 ms after it was removed or created, unless it is closed or replaced before.
//
// The caller waits for `descriptor` and for `deadline`, and then calls `dispatch`. File systems without notification
// (FUSE, NFS) report nothing. One thread.
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
#include <utility>
#include <vector>

struct inotify_event;

namespace host {

class FileWatcher {
  public:
    using Time = std::chrono::steady_clock::time_point;

    /// Requires an absolute `base`. Changes above that folder are not noticed while it exists.
    explicit FileWatcher(std::string base, std::chrono::milliseconds settleTime = std::chrono::milliseconds(200));

    /// Readable when there are events; -1 if inotify is not available.
    int descriptor() const { return inotify_.get(); }

    /// Follows these paths and no others from now on. Requires absolute paths below the base. Keeps pending changes of
    /// paths that were followed before.
    void follow(const std::set<std::string>& paths);

    /// Reads the events.
    void dispatch(Time now);
    /// Returns the paths whose changes count by now, and forgets them.
    std::vector<std::string> takeChanged(Time now);
    /// When to call `takeChanged` next even without an event.
    std::optional<Time> deadline() const;

    /// Whether the file is being written, or was written since `time`, so that a reader may have got half of it.
    bool isUnsettledSince(const std::string& path, Time time) const;
    /// Whether the file, or a folder on the way to it, has changed at `date` or later, by the file system's times. For
    /// paths that were not followed at that date.
    bool hasChangedSince(const std::string& path, platform::Date date) const;

    /// Why some changes will not be noticed, in one line.
    const std::optional<std::string>& failure() const { return failure_; }
    std::size_t watchCount() const { return watches_.size(); }

  private:
    /// Why a change does not count yet: until the deadline, or, for `truncated`, until the file is closed.
    enum class Pending { none, replaced, written, truncated };
    struct Target {
        std::string path;
        Pending pending = Pending::none;
        Time deadline;
        std::optional<Time> lastWrite;
        platform::Date newestChange;
        /// Device and inode.
        std::optional<std::pair<dev_t, ino_t>> identity;
        bool hasChanged = false;
    };
    /// The targets of one kernel watch: by names in a folder, and by its own content. An inode has one watch only.
    struct Watch {
        std::multimap<std::string, Target*, std::less<>> names;
        std::set<Target*> contents;
    };

    void handle(const inotify_event& event, std::string_view name, Time now);
    void nameChanged(Target& target, std::uint32_t mask, Time now);
    void contentChanged(Target& target, std::uint32_t mask, Time now);
    void attributesChanged(Target& target, Time now);
    static void markChanged(Target& target);
    void postpone(Target& target, Pending pending, Time now);
    static bool hasDeadline(const Target& target) {
        return target.pending == Pending::replaced || target.pending == Pending::written;
    }
    void rebuild(std::optional<Time> now);
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
