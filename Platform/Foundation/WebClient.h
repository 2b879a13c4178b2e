// The web, as an effect that is handed in.
#pragma once

#include "Platform/Foundation/Data.h"
#include "Platform/Foundation/Expected.h"
#include "Platform/Foundation/URL.h"

#include <atomic>
#include <chrono>
#include <cstddef>
#include <string>

namespace platform {

/// Why a download failed.
struct WebError {
    /// In English, for the log: "Could not resolve host: feeds.example".
    std::string description;
};

class WebClient {
  public:
    virtual ~WebClient() = default;
    /// Downloads `address` and waits for it. The body is what the last server sent, with any status. Any
    /// thread, several at once.
    virtual Expected<Data, WebError> get(const URL& address) const = 0;
};

/// The web by libcurl, which is loaded at the first download.
///
/// - A plain GET with the headers that libcurl sends by itself (Host, Accept: */*) and Accept-Encoding: gzip and
///   deflate are understood and taken off the body. Other encodings need more memory than a feed is worth.
/// - HTTPS only, redirects included, of which `maxRedirects` are followed.
/// - Servers must prove who they are, to the certificates in the file SSL_CERT_FILE and the folders SSL_CERT_DIR, the
///   latter the system's where it is not set: as OpenSSL has it. (libcurl's own way is the system's single file, which
///   holds the same and takes 20 ms to read.)
/// - Proxies are those of https_proxy, all_proxy and no_proxy, in small letters or capitals.
/// - A body of more than `maxBody` bytes, with or without its encoding, is an error as soon as that is known; so are
///   headers and trailers of more than `maxHeaders` bytes, those of proxies and redirects included. What a proxy says
///   beside the headers of a refusal is not read.
/// - Nothing is kept after a download: no connection, no cookie, no file.
///
/// The process must ignore SIGPIPE.
class CurlWebClient final : public WebClient {
  public:
    static constexpr std::size_t maxBody = std::size_t{16} << 20U;
    static constexpr std::size_t maxHeaders = std::size_t{256} << 10U;
    static constexpr long maxRedirects = 20;

    /// When a download ends with an error, at most a second later.
    struct Timeouts {
        /// To connect, with the name's lookup, a proxy and TLS; and then without a byte of a header or the body.
        std::chrono::milliseconds silence{20'000};
        /// In all.
        std::chrono::milliseconds total{90'000};
        /// After `endSoon`.
        std::chrono::milliseconds end{500};
    };

    CurlWebClient() : CurlWebClient(Timeouts()) {}
    explicit CurlWebClient(const Timeouts& timeouts) : timeouts_(timeouts) {}

    Expected<Data, WebError> get(const URL& address) const override;

    /// Gives downloads no more than `Timeouts::end`, those that start only then included; their error is "cancelled".
    /// Any thread; the first call counts.
    void endSoon();

  private:
    using Clock = std::chrono::steady_clock;

    Timeouts timeouts_;
    std::atomic<Clock::time_point> end_{Clock::time_point::max()};
};

} // namespace platform
