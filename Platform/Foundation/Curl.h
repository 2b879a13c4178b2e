// The functions of libcurl that this folder uses, loaded at first need.
//
// Linking it would cost every start of the program some 4 ms and 6 MB. Any thread.
#pragma once

#include <curl/curl.h>

namespace platform {

struct Curl {
    decltype(&::curl_easy_init) easyInit = nullptr;
    decltype(&::curl_easy_setopt) easySetopt = nullptr;
    decltype(&::curl_easy_perform) easyPerform = nullptr;
    decltype(&::curl_easy_getinfo) easyGetinfo = nullptr;
    decltype(&::curl_easy_strerror) easyStrerror = nullptr;
    decltype(&::curl_easy_cleanup) easyCleanup = nullptr;

    /// Returns all of them, ready for use, or null without the library.
    static const Curl* shared();
};

} // namespace platform
