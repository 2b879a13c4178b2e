// Files in memory that fail on purpose. One thread at a time.
#pragma once

#include "Platform/Foundation/FileSystem.h"

#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>

namespace platform {

class MemoryFileSystem final : public FileSystem {
  public:
    std::optional<Data> read(const std::string& path) const override {
        ++reads_[path];
        const auto file = files_.find(path);
        return file == files_.end() || unreadable_.contains(path) ? std::nullopt : std::optional(file->second);
    }

    bool exists(const std::string& path) const override { return files_.contains(path); }

    std::optional<FileError> replace(const std::string& path, std::string_view bytes) const override {
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

    /// Creates or replaces a file. Data that was read before stays as it was.
    void write(const std::string& path, std::string content) {
        files_.insert_or_assign(path, Data::owning(std::move(content)));
    }

    /// From now on no file can be replaced by more than `bytes` bytes, as on a full disk.
    void limitRoom(std::size_t bytes) { room_ = bytes; }
    void freeRoom() { room_.reset(); }

    /// From now on every replacement fails at its end.
    void loseRenames() { losesRenames_ = true; }

    /// From now on `path` exists but cannot be read.
    void makeUnreadable(const std::string& path) { unreadable_.insert(path); }
    void makeReadable(const std::string& path) { unreadable_.erase(path); }

    /// Returns the number of calls for `path`, failed ones included.
    int readCount(const std::string& path) const { return reads_[path]; }
    int replacementCount(const std::string& path) const { return replacements_[path]; }

  private:
    mutable std::map<std::string, Data> files_;
    std::set<std::string> unreadable_;
    std::optional<std::size_t> room_;
    bool losesRenames_ = false;
    mutable std::map<std::string, int> reads_;
    mutable std::map<std::string, int> replacements_;
};

} // namespace platform
