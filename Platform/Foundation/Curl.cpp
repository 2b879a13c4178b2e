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
        library.find("curl_easy_setopt", curl.easySetopt) && library.find("curl_easy_getinfo", curl.easyGetinfo) &&
        library.find("curl_easy_strerror", curl.easyStrerror) && library.find("curl_easy_cleanup", curl.easyCleanup) &&
        library.find("curl_multi_init", curl.multiInit) && library.find("curl_multi_add_handle", curl.multiAddHandle) &&
        library.find("curl_multi_remove_handle", curl.multiRemoveHandle) &&
        library.find("curl_multi_perform", curl.multiPerform) && library.find("curl_multi_poll", curl.multiPoll) &&
        library.find("curl_multi_info_read", curl.multiInfoRead) &&
        library.find("curl_multi_strerror", curl.multiStrerror) &&
        library.find("curl_multi_cleanup", curl.multiCleanup);
    // Once in a process, before anything else.
    return isComplete && globalInit(CURL_GLOBAL_DEFAULT) == CURLE_OK ? std::optional(curl) : std::nullopt;
}

} // namespace

const Curl* Curl::shared() {
    static const std::optional<Curl> curl = load();
    return curl ? &*curl : nullptr;
}

} // namespace platform
