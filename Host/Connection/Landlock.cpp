#include "Host/Connection/Landlock.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <linux/landlock.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace host {
namespace {

using platform::FileDescriptor;

// Constants that the distribution's header, of version 2, lacks.
constexpr std::uint64_t accessTruncate = 1U << 14U;
constexpr std::uint64_t accessDeviceControl = 1U << 15U;
constexpr std::uint64_t accessBindTcp = 1U << 0U;
constexpr std::uint64_t accessConnectTcp = 1U << 1U;
constexpr std::uint64_t scopeAbstractSockets = 1U << 0U;
constexpr std::uint64_t scopeSignals = 1U << 1U;

struct RulesetAttributes {
    std::uint64_t files = 0;
    std::uint64_t network = 0;
    std::uint64_t scopes = 0;
};

constexpr std::uint64_t readingFiles = LANDLOCK_ACCESS_FS_READ_FILE;
constexpr std::uint64_t reading = readingFiles | LANDLOCK_ACCESS_FS_READ_DIR;
constexpr std::uint64_t writingFiles = LANDLOCK_ACCESS_FS_WRITE_FILE | accessTruncate;
constexpr std::uint64_t creating = reading | writingFiles | LANDLOCK_ACCESS_FS_REMOVE_DIR |
                                   LANDLOCK_ACCESS_FS_REMOVE_FILE | LANDLOCK_ACCESS_FS_MAKE_DIR |
                                   LANDLOCK_ACCESS_FS_MAKE_REG | LANDLOCK_ACCESS_FS_MAKE_SYM | LANDLOCK_ACCESS_FS_REFER;
/// The rights that the kernel accepts for a file that is not a folder.
constexpr std::uint64_t ofFiles = LANDLOCK_ACCESS_FS_EXECUTE | readingFiles | writingFiles | accessDeviceControl;

std::uint64_t rightsOf(FileAccess access) {
    switch (access) {
    case FileAccess::readAndRun:
        return reading | LANDLOCK_ACCESS_FS_EXECUTE;
    case FileAccess::readAndWrite:
        return reading | writingFiles;
    case FileAccess::readWriteCreate:
        return creating;
    case FileAccess::read:
        break;
    }
    return reading;
}

std::uint64_t fileRightsOfVersion(int version) {
    constexpr std::uint64_t first = (LANDLOCK_ACCESS_FS_MAKE_SYM << 1U) - 1;
    return first | (version >= 2 ? LANDLOCK_ACCESS_FS_REFER : 0) | (version >= 3 ? accessTruncate : 0) |
           (version >= 5 ? accessDeviceControl : 0);
}

FileDescriptor makeRuleset(const RulesetAttributes& attributes, int version) {
    if (version <= 0) {
        return FileDescriptor(-1);
    }
    return FileDescriptor(static_cast<int>(syscall(SYS_landlock_create_ruleset, &attributes, sizeof attributes, 0)));
}

RulesetAttributes attributesOf(NetworkAccess network, int version) {
    RulesetAttributes restricted{.files = fileRightsOfVersion(version)};
    if (version >= 4) {
        restricted.network = accessBindTcp | (network == NetworkAccess::none ? accessConnectTcp : 0);
    }
    restricted.scopes = version >= 6 ? scopeAbstractSockets | scopeSignals : 0;
    return restricted;
}

} // namespace

int landlockVersion() {
    const long version = syscall(SYS_landlock_create_ruleset, nullptr, 0, LANDLOCK_CREATE_RULESET_VERSION);
    return static_cast<int>(std::max(version, 0L));
}

LandlockRuleset::LandlockRuleset(NetworkAccess network, int version)
    : restricted_(fileRightsOfVersion(version)), descriptor_(makeRuleset(attributesOf(network, version), version)) {}

void LandlockRuleset::grant(const FileDescriptor& file, FileKind kind, FileAccess access) const {
    const std::uint64_t possible = kind == FileKind::folder ? restricted_ : restricted_ & ofFiles;
    const landlock_path_beneath_attr rule{.allowed_access = rightsOf(access) & possible, .parent_fd = file.get()};
    // If this fails, the file stays denied.
    syscall(SYS_landlock_add_rule, descriptor_.get(), LANDLOCK_RULE_PATH_BENEATH, &rule, 0);
}

int LandlockRuleset::apply() const noexcept {
    return syscall(SYS_landlock_restrict_self, descriptor_.get(), 0) == 0 ? 0 : errno;
}

} // namespace host
