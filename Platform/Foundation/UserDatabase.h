// The user database, as an effect that is handed in.
#pragma once

#include <optional>
#include <string>

namespace platform {

class UserDatabase {
  public:
    virtual ~UserDatabase() = default;
    /// The home folder that the user database records for the current user; nothing without a record or a home in it.
    virtual std::optional<std::string> recordedHome() const = 0;
    /// The home folder as the process was told it (the HOME variable), "/" without one or with an empty one.
    virtual std::string processHome() const = 0;
};

/// The system's own (getuid, getpwuid).
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
