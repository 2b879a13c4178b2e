// Files that live in memory and fail on purpose.
#pragma once

#include "Platform/Foundation/FileSystem.h"

#include <map>
#include <set>
#include <string>
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
        ++reads_[path];
        const auto file = files_.find(path);
        if (file == files_.end() || unreadable_.contains(path)) {
            return std::nullopt;
        }
        return file->second;
    }

    /// Creates or replaces a file, as a rename over it would: what was read before stays as it was.
    void write(const std::string& path, std::string content) {
        files_.insert_or_assign(path, Data::owning(std::move(content)));
    }
    void remove(const std::string& path) { files_.erase(path); }

    /// From now on `path` is there but cannot be read, as without permission.
    void makeUnreadable(const std::string& path) { unreadable_.insert(path); }
    void makeReadable(const std::string& path) { unreadable_.erase(path); }

    /// Leaves only the first `size` bytes of a file, as a writer that was interrupted does.
    void cutShort(const std::string& path, std::size_t size) {
        const Data& whole = files_.at(path);
        write(path, std::string(whole.bytes().substr(0, size)));
    }

    /// How often `path` was asked for, whether it was there or not.
    int readCount(const std::string& path) const {
        const auto count = reads_.find(path);
        return count == reads_.end() ? 0 : count->second;
    }

  private:
    std::map<std::string, Data> files_;
    std::set<std::string> unreadable_;
    mutable std::map<std::string, int> reads_;
};

} // namespace platform
