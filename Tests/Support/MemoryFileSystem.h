// Files that live in memory and fail on purpose.
//
// Reading and replacing may happen on several threads; what a test says beforehand is said on one.
#pragma once

#include "Platform/Foundation/FileSystem.h"

#include <map>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>

namespace platform {

class MemoryFileSystem final : public FileSystem {
  public:
    MemoryFileSystem() = default;
    /// Files by path, with their content.
    explicit MemoryFileSystem(const std::map<std::string, std::string>& files) {
        for (const auto& [path, content] : files) {
            write(path, content);
        }
    }

    std::optional<Data> read(const std::string& path) const override {
        const std::scoped_lock lock(mutex_);
        ++reads_[path];
        const auto file = files_.find(path);
        if (file == files_.end() || unreadable_.contains(path)) {
            return std::nullopt;
        }
        return file->second;
    }

    bool exists(const std::string& path) const override {
        const std::scoped_lock lock(mutex_);
        return files_.contains(path);
    }

    std::optional<FileError> replace(const std::string& path, std::string_view bytes) const override {
        const std::scoped_lock lock(mutex_);
        ++replacements_[path];
        if (room_ && bytes.size() > *room_) {
            return FileError{"cannot write " + path + ": No space left on device"};
        }
        if (losesRenames_) {
            return FileError{"cannot write " + path + ": Input/output error"};
        }
        files_.insert_or_assign(path, Data::owning(std::string(bytes)));
        return std::nullopt;
    }

    std::optional<FileError> replaceUnflushed(const std::string& path, std::string_view bytes) const override {
        return replace(path, bytes);
    }

    /// Creates or replaces a file, as a rename over it would: what was read before stays as it was.
    void write(const std::string& path, std::string content) {
        const std::scoped_lock lock(mutex_);
        files_.insert_or_assign(path, Data::owning(std::move(content)));
    }
    void remove(const std::string& path) {
        const std::scoped_lock lock(mutex_);
        files_.erase(path);
    }

    /// From now on no file of more than `bytes` bytes can replace another: the disk is full, its write is cut short.
    void limitRoom(std::size_t bytes) { room_ = bytes; }
    void freeRoom() { room_.reset(); }

    /// From now on new files are written and do not get to their place.
    void loseRenames() { losesRenames_ = true; }

    /// From now on `path` is there but cannot be read, as without permission.
    void makeUnreadable(const std::string& path) { unreadable_.insert(path); }
    void makeReadable(const std::string& path) { unreadable_.erase(path); }

    /// How often `path` was asked for, whether it was there or not.
    int readCount(const std::string& path) const { return count(reads_, path); }
    /// How often `path` was to be replaced, whether that went well or not.
    int replacementCount(const std::string& path) const { return count(replacements_, path); }

  private:
    using Counts = std::map<std::string, int>;

    int count(const Counts& counts, const std::string& path) const {
        const std::scoped_lock lock(mutex_);
        const auto found = counts.find(path);
        return found == counts.end() ? 0 : found->second;
    }

    mutable std::mutex mutex_;
    mutable std::map<std::string, Data> files_;
    std::set<std::string> unreadable_;
    std::optional<std::size_t> room_;
    bool losesRenames_ = false;
    mutable Counts reads_;
    mutable Counts replacements_;
};

} // namespace platform
