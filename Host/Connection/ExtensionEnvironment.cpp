#include "Host/Connection/ExtensionEnvironment.h"

#include "Host/Connection/UserFolders.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <dlfcn.h>
#include <fstream>
#include <string_view>
#include <unistd.h>

extern char** environ; // NOLINT(readability-redundant-declaration): POSIX leaves its declaration to the program

namespace host {
namespace {

namespace fs = std::filesystem;
using platform::Outcome;
using platform::unavailable;
using platform::Unexpected;

bool passesThrough(std::string_view name) {
    constexpr std::array names{"PATH",     "LANG",        "LANGUAGE", "TZ",        "http_proxy",    "https_proxy",
                               "no_proxy", "HTTPS_PROXY", "NO_PROXY", "all_proxy", "SSL_CERT_FILE", "SSL_CERT_DIR"};
    return name.starts_with("LC_") || std::find(names.begin(), names.end(), name) != names.end();
}

constexpr const char* wrapperLibrary = "libnss_wrapper.so";

/// Whether the wrapper can be loaded. Without it the extension would read the user's real library.
bool wrapperIsInstalled() {
    void* library = dlopen(wrapperLibrary, RTLD_LAZY | RTLD_LOCAL);
    return library != nullptr && dlclose(library) == 0;
}

/// Makes a user database with the current user alone, whose home is `home`.
Outcome<TemporaryFolder> userDatabaseWith(const fs::path& home, std::vector<std::string>& variables) {
    if (home.string().find_first_of(":\n") != std::string::npos) {
        return unavailable(fmt::format("a user database cannot hold the home {}", home.string()));
    }
    if (!wrapperIsInstalled()) {
        return unavailable("another home takes nss_wrapper, which is not installed");
    }
    std::error_code failure;
    std::string name = (fs::temp_directory_path(failure) / "widgethost-XXXXXX").string();
    if (failure || mkdtemp(name.data()) == nullptr) {
        return unavailable("no temporary folder can be made");
    }
    TemporaryFolder folder(new fs::path(name));
    const fs::path users = *folder / "passwd";
    const fs::path groups = *folder / "group";
    std::ofstream(users) << fmt::format("user:x:{}:{}::{}:/bin/sh\n", getuid(), getgid(), home.string());
    std::ofstream(groups) << fmt::format("user:x:{}:\n", getgid());
    variables.push_back(std::string("LD_PRELOAD=") + wrapperLibrary);
    variables.push_back("NSS_WRAPPER_PASSWD=" + users.string());
    variables.push_back("NSS_WRAPPER_GROUP=" + groups.string());
#ifdef __SANITIZE_ADDRESS__
    // The sanitizer requires to be the first library, but the wrapper is loaded before it. It would look for leaks by a
    // process that traces it, which the sandbox refuses.
    variables.emplace_back("ASAN_OPTIONS=verify_asan_link_order=0:detect_leaks=0");
#endif
    return folder;
}

/// Whether the user is in /etc/passwd. Users of directory services are not.
bool isUserInFile() {
    std::ifstream users("/etc/passwd");
    for (std::string line; std::getline(users, line);) {
        const std::size_t number = line.find(':', line.find(':') + 1) + 1;
        if (line.compare(number, line.find(':', number) - number, std::to_string(getuid())) == 0) {
            return true;
        }
    }
    return false;
}

} // namespace

void RemoveFolder::operator()(const fs::path* folder) const {
    std::error_code ignored;
    fs::remove_all(*folder, ignored);
    std::default_delete<const fs::path>()(folder);
}

Outcome<ExtensionEnvironment> makeExtensionEnvironment(const Manifest& manifest, const std::optional<fs::path>& home) {
    ExtensionEnvironment environment;
    std::error_code failure;
    environment.home = realHome(home);
    const fs::path data = home ? environment.home / ".local" / "share" : userDataFolder();
    if (!data.is_absolute()) {
        return unavailable("there is no place for the extension's container: neither XDG_DATA_HOME nor "
                           "HOME is an absolute path");
    }
    environment.container = data / "widgethost" / "containers" / manifest.identifier;
    const fs::path caches = environment.container / "Caches";
    fs::create_directories(caches, failure);
    if (failure) {
        return unavailable(fmt::format("cannot make the extension's container {}: {}", environment.container.string(),
                                       failure.message()));
    }
    for (char** variable = environ; *variable != nullptr; ++variable) {
        const std::string_view text = *variable;
        if (passesThrough(text.substr(0, text.find('=')))) {
            environment.variables.emplace_back(text);
        }
    }
    environment.variables.push_back("HOME=" + environment.container.string());
    environment.variables.push_back("XDG_CACHE_HOME=" + caches.string());
    // Directory services need sockets that a confined extension cannot use.
    const bool needsDatabase = home || (!environment.home.empty() && !isUserInFile() && wrapperIsInstalled());
    if (needsDatabase) {
        auto database = userDatabaseWith(environment.home, environment.variables);
        if (!database) {
            return Unexpected{database.error()};
        }
        environment.userDatabase = *std::move(database);
    }
    return environment;
}

} // namespace host
