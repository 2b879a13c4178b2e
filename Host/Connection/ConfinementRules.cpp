#include "Host/Connection/ConfinementRules.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <string>
#include <string_view>

namespace host {
namespace {

namespace fs = std::filesystem;

/// With what a script runs.
constexpr std::array commandFolders{"/bin", "/usr/bin", "/usr/local/bin"};

/// The dynamic loader and what it loads.
constexpr std::array libraryFolders{"/lib", "/lib64", "/usr/lib", "/usr/lib64", "/usr/local/lib"};

constexpr std::array readable{
    // Libraries.
    "/etc/ld.so.cache",
    "/etc/ld.so.preload",
    // Certificates; /etc/ssl has private keys, too.
    "/etc/ssl/certs",
    "/etc/ssl/openssl.cnf",
    "/etc/ca-certificates",
    "/etc/pki/tls/certs",
    "/etc/pki/tls/cert.pem",
    "/etc/pki/tls/openssl.cnf",
    "/etc/pki/ca-trust",
    "/etc/crypto-policies",
    "/usr/share/ca-certificates",
    "/usr/local/share/ca-certificates",
    "/usr/share/crypto-policies",
    // How names of hosts and users are looked up.
    "/etc/resolv.conf",
    "/etc/hosts",
    "/etc/nsswitch.conf",
    "/etc/host.conf",
    "/etc/gai.conf",
    "/etc/services",
    "/etc/protocols",
    "/etc/passwd",
    "/etc/group",
    "/run/systemd/resolve",
    // Zones.
    "/etc/localtime",
    "/etc/timezone",
    "/usr/share/zoneinfo",
    // Languages.
    "/etc/locale.alias",
    "/usr/share/locale",
    "/usr/share/i18n",
    "/usr/share/icu",
    // Devices that only give.
    "/dev/random",
    "/dev/urandom",
    "/dev/zero",
#ifdef __SANITIZE_ADDRESS__
    // A sanitizer looks at its own process.
    "/proc",
#endif
};

/// What follows `name`= in the variables; empty without it.
std::string_view valueOf(const ExtensionEnvironment& environment, std::string_view name) {
    for (const std::string_view variable : environment.variables) {
        if (variable.starts_with(name) && variable.substr(name.size()).starts_with('=')) {
            return variable.substr(name.size() + 1);
        }
    }
    return {};
}

class RulesBuilder {
  public:
    void grant(const fs::path& path, FileAccess access) {
        // A path that depends on the folder that the host happens to run in is not meant.
        if (path.is_absolute()) {
            rules_.files.push_back({path, access});
        }
    }

    template <class Paths>
    void grantEach(const Paths& paths, FileAccess access) {
        for (const auto& path : paths) {
            grant(path, access);
        }
    }

    void grantList(std::string_view paths, FileAccess access) {
        while (!paths.empty()) {
            const std::size_t colon = std::min(paths.find(':'), paths.size());
            grant(paths.substr(0, colon), access);
            paths.remove_prefix(std::min(colon + 1, paths.size()));
        }
    }

    ConfinementRules rulesWith(NetworkAccess network) {
        rules_.network = network;
        return std::move(rules_);
    }

  private:
    ConfinementRules rules_;
};

} // namespace

std::optional<fs::path> scriptInterpreter(const fs::path& program) {
    std::error_code failure;
    if (!fs::is_regular_file(program, failure)) {
        return std::nullopt;
    }
    // As much as the kernel looks at.
    std::string line(256, '\0');
    std::ifstream file(program, std::ios::binary);
    file.read(line.data(), static_cast<std::streamsize>(line.size()));
    line.resize(static_cast<std::size_t>(file.gcount()));
    if (!line.starts_with("#!")) {
        return std::nullopt;
    }
    const std::size_t start = std::min(line.find_first_not_of(" \t", 2), line.size());
    const std::size_t end = std::min(line.find_first_of(" \t\n", start), line.size());
    return line.substr(start, end - start);
}

ConfinementRules confinementRules(const Manifest& manifest, const ExtensionEnvironment& environment,
                                  const std::optional<fs::path>& interpreter) {
    RulesBuilder rules;
    rules.grantEach(libraryFolders, FileAccess::readAndRun);
    rules.grantEach(readable, FileAccess::read);
    rules.grant("/dev/null", FileAccess::readAndWrite);
    rules.grantList(valueOf(environment, "SSL_CERT_FILE"), FileAccess::read);
    rules.grantList(valueOf(environment, "SSL_CERT_DIR"), FileAccess::read);
    // A zone may be a file of its own, ":/path".
    rules.grantList(valueOf(environment, "TZ"), FileAccess::read);
    if (environment.userDatabase) {
        rules.grant(environment.userDatabase->path(), FileAccess::read);
    }
    rules.grant(manifest.executable, FileAccess::readAndRun);
    rules.grant(manifest.executable.parent_path().parent_path() / "share" / "locale", FileAccess::read);
    if (interpreter) {
        rules.grant(*interpreter, FileAccess::readAndRun);
        rules.grantEach(commandFolders, FileAccess::readAndRun);
    }
    for (const std::string& folder : manifest.reads) {
        rules.grant(environment.home / folder, FileAccess::read);
    }
    rules.grant(environment.container, FileAccess::own);
    return rules.rulesWith(manifest.network ? NetworkAccess::connections : NetworkAccess::none);
}

} // namespace host
