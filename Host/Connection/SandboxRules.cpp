#include "Host/Connection/SandboxRules.h"

#include "Platform/Foundation/FileDescriptor.h"

#include <algorithm>
#include <array>
#include <fcntl.h>
#include <string>
#include <string_view>
#include <unistd.h>

namespace host {
namespace {

namespace fs = std::filesystem;

/// The commands of scripts.
constexpr std::array commandFolders{"/bin", "/usr/bin", "/usr/local/bin"};

/// The dynamic loader and its libraries.
constexpr std::array libraryFolders{"/lib", "/lib64", "/usr/lib", "/usr/lib64", "/usr/local/lib"};

constexpr std::array readable{
    "/etc/ld.so.cache",
    "/etc/ld.so.preload",
    // The user, zones, languages.
    "/etc/nsswitch.conf",
    "/etc/passwd",
    "/etc/group",
    "/etc/localtime",
    "/etc/timezone",
    "/usr/share/zoneinfo",
    "/usr/share/locale",
    "/usr/share/icu",
    "/dev/urandom",
#ifdef __SANITIZE_ADDRESS__
    // For the sanitizer.
    "/proc",
#endif
};

/// For network connections.
constexpr std::array readableWithNetwork{
    // Resolver.
    "/etc/resolv.conf",
    "/etc/hosts",
    "/etc/host.conf",
    "/etc/gai.conf",
    "/etc/services",
    "/run/systemd/resolve",
    // Certificates, by distribution. Not /etc/ssl as a whole, which also has private keys.
    "/etc/ssl/certs",
    "/etc/ssl/openssl.cnf",
    "/usr/share/ca-certificates",
    "/usr/local/share/ca-certificates",
    "/etc/ca-certificates",
    "/etc/pki/tls/certs",
    "/etc/pki/tls/openssl.cnf",
    "/etc/pki/ca-trust",
    "/etc/crypto-policies",
    "/usr/share/crypto-policies",
};

/// Returns the value of a variable; empty if it is not set.
std::string_view valueOf(const ExtensionEnvironment& environment, std::string_view name) {
    for (const std::string_view variable : environment.variables) {
        if (variable.starts_with(name) && variable.substr(name.size()).starts_with('=')) {
            return variable.substr(name.size() + 1);
        }
    }
    return {};
}

using Grants = std::vector<FileGrant>;

void grant(Grants& grants, std::string path, FileAccess access) {
    // A relative path would depend on the host's working directory.
    if (path.starts_with('/')) {
        grants.push_back({std::move(path), access});
    }
}

template <class Paths>
void grantEach(Grants& grants, const Paths& paths, FileAccess access) {
    for (const char* path : paths) {
        grant(grants, path, access);
    }
}

/// Grants a list of paths that are separated by colons.
void grantList(Grants& grants, std::string_view paths, FileAccess access) {
    while (!paths.empty()) {
        const std::size_t colon = std::min(paths.find(':'), paths.size());
        grant(grants, std::string(paths.substr(0, colon)), access);
        paths.remove_prefix(std::min(colon + 1, paths.size()));
    }
}

} // namespace

std::optional<fs::path> scriptInterpreter(const fs::path& program) {
    // O_NONBLOCK in case it is a pipe.
    const platform::FileDescriptor file(open(program.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    std::array<char, 256> start{}; // as much as the kernel looks at
    const ssize_t count = read(file.get(), start.data(), start.size());
    std::string_view line(start.data(), static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
    if (!line.starts_with("#!")) {
        return std::nullopt;
    }
    line.remove_prefix(std::min(line.find_first_not_of(" \t", 2), line.size()));
    return line.substr(0, line.find_first_of(" \t\n"));
}

SandboxRules sandboxRules(const Manifest& manifest, const ExtensionEnvironment& environment,
                          const std::optional<fs::path>& interpreter) {
    Grants grants;
    grantEach(grants, libraryFolders, FileAccess::readAndRun);
    grantEach(grants, readable, FileAccess::read);
    grant(grants, "/dev/null", FileAccess::readAndWrite);
    // TZ may name a file, ":/path".
    grantList(grants, valueOf(environment, "TZ"), FileAccess::read);
    if (manifest.network) {
        grantEach(grants, readableWithNetwork, FileAccess::read);
        grant(grants, std::string(valueOf(environment, "SSL_CERT_FILE")), FileAccess::read);
        grantList(grants, valueOf(environment, "SSL_CERT_DIR"), FileAccess::read);
    }
    if (environment.userDatabase) {
        grant(grants, *environment.userDatabase, FileAccess::read);
    }
    grant(grants, manifest.executable, FileAccess::readAndRun);
    grant(grants, manifest.executable.parent_path().parent_path() / "share" / "locale", FileAccess::read);
    if (interpreter) {
        grant(grants, *interpreter, FileAccess::readAndRun);
        grantEach(grants, commandFolders, FileAccess::readAndRun);
    }
    for (const std::string& folder : manifest.reads) {
        grant(grants, environment.home / folder, FileAccess::read);
    }
    grant(grants, environment.container, FileAccess::readWriteCreate);
    return {.files = std::move(grants), .network = manifest.network ? NetworkAccess::connections : NetworkAccess::none};
}

} // namespace host
