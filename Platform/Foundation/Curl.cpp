#include "Platform/Foundation/Curl.h"

#include "Platform/Foundation/LazyLibrary.h"

#include <optional>

namespace platform {

namespace {

constinit LazyLibrary library("libcurl.so.4");

std::optional<Curl> load() {
    Curl curl;
    decltype(&::curl_global_init) globalInit = nullptr;
    const bool isComplete =
        library.find("curl_global_init", globalInit) && library.find("curl_easy_init", curl.easyInit) &&
        library.find("curl_easy_setopt", curl.easySetopt) && library.find("curl_easy_perform", curl.easyPerform) &&
        library.find("curl_easy_getinfo", curl.easyGetinfo) && library.find("curl_easy_strerror", curl.easyStrerror) &&
        library.find("curl_easy_cleanup", curl.easyCleanup);
    // Once in a process, before anything else.
    return isComplete && globalInit(CURL_GLOBAL_DEFAULT) == CURLE_OK ? std::optional(curl) : std::nullopt;
}

} // namespace

const Curl* Curl::shared() {
    static const std::optional<Curl> curl = load();
    return curl ? &*curl : nullptr;
}

} // namespace platform
