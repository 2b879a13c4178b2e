// The user database, as an effect that is passed in.
#pragma once

#include <optional>
#include <string>

namespace platform {

class UserDatabase {
  public:
    virtual ~UserDatabase() = default;
    /// Returns the current user's home folder in the user database; nothing without a record or without a home in it.
    virtual std::optional<std::string> recordedHome() const = 0;
    /// Returns the environment variable HOME; "/" if it is not set or empty.
    virtual std::string processHome() const = 0;
};

/// The system's user database (getuid, getpwuid).
class SystemUserDatabase final : public UserDatabase {
  public:
    std::optional<std::string> recordedHome() const override;
    std::string processHome() const override;
    static const SystemUserDatabase& shared();
};

/// Returns the path of the user's folder for caches: XDG_CACHE_HOME if that is an absolute path, else ".cache" in the
/// home folder, which is HOME if that is an absolute path, else the one that `users` records, else "/". Does not access
/// the disk.
///
/// Source: the XDG base directories. Any thread, while the process's variables do not change.
std::string cachesDirectory(const UserDatabase& users);

} // namespace platform
