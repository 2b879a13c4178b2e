// The web, as an effect that is handed in.
#pragma once

#include "Platform/Foundation/Data.h"
#include "Platform/Foundation/Expected.h"
#include "Platform/Foundation/FileDescriptor.h"
#include "Platform/Foundation/URL.h"

#include <atomic>
#include <chrono>
#include <cstddef>
#include <string>

namespace platform {

/// Why there is no answer.
struct WebError {
    /// In English, for the log: "Could not resolve host: feeds.example".
    std::string description;
};

class WebClient {
  public:
    virtual ~WebClient() = default;
    /// Downloads `address` and waits for it. The body is what the last server sent, whatever status it gave. Any
    /// thread, several at once.
    virtual Expected<Data, WebError> get(const URL& address) const = 0;
};

/// The web by libcurl, which is loaded at the first download.
///
/// - A plain GET with the headers that libcurl sends by itself (Host, Accept: */*) and Accept-Encoding: gzip and
///   deflate are understood and taken off the body. Other encodings need more memory than a feed is worth.
/// - HTTPS only, redirects included, of which `greatestRedirects` are followed.
/// - Servers must prove who they are, to the certificates in the file SSL_CERT_FILE and the folders SSL_CERT_DIR, the
///   latter the system's where it is not set: as OpenSSL has it. (libcurl's own way is the system's single file, which
///   holds the same and takes 20 ms to read.)
/// - Proxies are those of https_proxy, all_proxy and no_proxy, in small letters or capitals.
/// - A body of more than `greatestBody` bytes, as it is without its encoding, is an error as soon as that is known.
/// - Nothing is kept after a download: no connection, no cookie, no file.
///
/// The process must ignore SIGPIPE.
class CurlWebClient final : public WebClient {
  public:
    static constexpr std::size_t greatestBody = std::size_t{16} << 20U;
    static constexpr long greatestRedirects = 20;

    struct Patience {
        /// To connect, and for a server that sends less than a byte a second. There is no limit to the whole.
        std::chrono::seconds withServers{60};
        /// For downloads after `endSoon`.
        std::chrono::milliseconds atTheEnd{2000};
    };

    CurlWebClient() : CurlWebClient(Patience()) {}
    explicit CurlWebClient(const Patience& patience);

    Expected<Data, WebError> get(const URL& address) const override;

    /// Nobody waits for long any more: downloads that are not done when `Patience::atTheEnd` is over, those that start
    /// only then included, end with the error "cancelled". Any thread; the first call counts.
    void endSoon();

  private:
    using Clock = std::chrono::steady_clock;

    Patience patience_;
    /// Readable from `endSoon` on.
    FileDescriptor endIsNear_;
    std::atomic<Clock::time_point> end_{Clock::time_point::max()};
};

} // namespace platform
