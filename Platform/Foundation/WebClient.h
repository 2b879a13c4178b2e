// The web, as an effect that is passed in.
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
    /// Downloads `address` and waits for it. Returns the body that the last server sent, with any status. Any thread,
    /// several at once.
    virtual Expected<Data, WebError> get(const URL& address) const = 0;
};

/// The web by libcurl, which is loaded at the first download.
///
/// - Sends a GET with the headers Host, Accept: */* and Accept-Encoding, and decodes gzip and deflate. Other encodings
///   need more memory than a feed is worth.
/// - HTTPS only, redirects included, of which `maxRedirects` are followed.
/// - Servers are verified by the certificates in the file SSL_CERT_FILE and the folders SSL_CERT_DIR, by default the
///   system's folder, as OpenSSL does. (libcurl's default is the system's single file, which takes 20 ms to read.)
/// - Proxies are those of https_proxy, all_proxy and no_proxy, in small letters or capitals.
/// - A body of more than `maxBody` bytes, encoded or not, is an error as soon as that is known; so are headers and
///   trailers of more than `maxHeaders` bytes, including those of proxies and redirects. The body of a proxy's refusal
///   is not read.
/// - Keeps nothing after a download: no connection, no cookie, no file.
///
/// Requires that the process ignores SIGPIPE.
class CurlWebClient final : public WebClient {
  public:
    static constexpr std::size_t maxBody = std::size_t{16} << 20U;
    static constexpr std::size_t maxHeaders = std::size_t{256} << 10U;
    static constexpr long maxRedirects = 20;

    /// A download ends with an error after these times, at most a second later.
    struct Timeouts {
        /// Of connecting, with name lookup, proxy and TLS; then, of silence between bytes.
        std::chrono::milliseconds silence{20'000};
        /// Of the whole download.
        std::chrono::milliseconds total{90'000};
        /// After `endSoon`.
        std::chrono::milliseconds end{500};
    };

    CurlWebClient() : CurlWebClient(Timeouts()) {}
    explicit CurlWebClient(const Timeouts& timeouts) : timeouts_(timeouts) {}

    Expected<Data, WebError> get(const URL& address) const override;

    /// Cancels present and later downloads after `Timeouts::end`; their error is "cancelled". Any thread; the first
    /// call counts.
    void endSoon();

  private:
    using Clock = std::chrono::steady_clock;

    Timeouts timeouts_;
    std::atomic<Clock::time_point> end_{Clock::time_point::max()};
};

} // namespace platform
