#include "Platform/Foundation/WebClient.h"

#include "Platform/Foundation/LazyLibrary.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string_view>
#include <utility>

#include <curl/curl.h>

namespace platform {

namespace {

using Clock = std::chrono::steady_clock;

/// The functions of libcurl, loaded at first need: linking it would cost every start of the program 4 ms and 6 MB.
struct Curl {
    decltype(&::curl_easy_init) easyInit = nullptr;
    decltype(&::curl_easy_setopt) easySetopt = nullptr;
    decltype(&::curl_easy_perform) easyPerform = nullptr;
    decltype(&::curl_easy_getinfo) easyGetinfo = nullptr;
    decltype(&::curl_easy_strerror) easyStrerror = nullptr;
    decltype(&::curl_easy_cleanup) easyCleanup = nullptr;
};

/// Returns all of them, ready for use; nothing without the library.
std::optional<Curl> loadCurl() {
    static constinit LazyLibrary library("libcurl.so.4");
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

const char* nonEmptyVariable(const char* name) {
    const char* const value = std::getenv(name);
    return value != nullptr && *value != '\0' ? value : nullptr;
}

Unexpected<WebError> webError(std::string_view description) {
    return Unexpected{WebError{std::string(description)}};
}

/// One download. `shouldContinue` and `addHeader` bound everything that does not end by itself.
class Download {
  public:
    Download(const Curl& curl, const URL& address, const CurlWebClient::Timeouts& timeouts,
             const std::atomic<Clock::time_point>& end)
        : curl_(curl), timeouts_(timeouts), end_(end), easy_(curl.easyInit(), curl.easyCleanup) {
        if (easy_) {
            setUp(address);
        }
    }

    Expected<Data, WebError> run() {
        if (!isSetUp_) {
            return webError("libcurl cannot be set up");
        }
        const CURLcode code = curl_.easyPerform(easy_.get());
        if (error_ != nullptr) {
            return webError(error_);
        }
        if (proxyRefusal() != 0) {
            return webError("Received HTTP code " + std::to_string(proxyRefusal()) + " from proxy after CONNECT");
        }
        if (code != CURLE_OK) {
            return webError(message_.front() != '\0' ? message_.data() : curl_.easyStrerror(code));
        }
        return Data::owning(std::move(body_));
    }

  private:
    template <class Value>
    void set(CURLoption option, Value value) {
        isSetUp_ = isSetUp_ && curl_.easySetopt(easy_.get(), option, value) == CURLE_OK;
    }

    template <class Value>
    Value info(CURLINFO name) const {
        Value value = 0;
        curl_.easyGetinfo(easy_.get(), name, &value);
        return value;
    }

    void setUp(const URL& address) {
        isSetUp_ = true;
        set(CURLOPT_URL, address.absoluteString().c_str());
        set(CURLOPT_PROTOCOLS_STR, "https");
        set(CURLOPT_REDIR_PROTOCOLS_STR, "https");
        set(CURLOPT_FOLLOWLOCATION, 1L);
        set(CURLOPT_MAXREDIRS, CurlWebClient::maxRedirects);
        set(CURLOPT_ACCEPT_ENCODING, "gzip, deflate");
        // Divided among the addresses of a name, so that the next one is tried when one is silent.
        set(CURLOPT_CONNECTTIMEOUT_MS, static_cast<long>(timeouts_.silence.count()));
        // The other way to log in at such a proxy blocks without calling `shouldContinue`.
        set(CURLOPT_SOCKS5_AUTH, static_cast<long>(CURLAUTH_BASIC));
        // Does not wait for the thread that looks up a name.
        set(CURLOPT_QUICK_EXIT, 1L);
        set(CURLOPT_NOSIGNAL, 1L);
        set(CURLOPT_ERRORBUFFER, message_.data());
        set(CURLOPT_NOPROGRESS, 0L);
        set(CURLOPT_XFERINFODATA, this);
        set(CURLOPT_XFERINFOFUNCTION, curl_xferinfo_callback{&Download::watch});
        set(CURLOPT_HEADERDATA, this);
        set(CURLOPT_HEADERFUNCTION, curl_write_callback{&Download::receiveHeader});
        set(CURLOPT_WRITEDATA, this);
        set(CURLOPT_WRITEFUNCTION, curl_write_callback{&Download::receive});
        setCertificates();
    }

    /// Sets the certificates to trust. Without a file, null removes libcurl's own.
    void setCertificates() {
        const char* const file = nonEmptyVariable("SSL_CERT_FILE");
        const char* const folder = nonEmptyVariable("SSL_CERT_DIR");
        for (const auto option : {CURLOPT_CAINFO, CURLOPT_PROXY_CAINFO}) {
            set(option, file);
        }
        if (folder != nullptr) {
            for (const auto option : {CURLOPT_CAPATH, CURLOPT_PROXY_CAPATH}) {
                set(option, folder);
            }
        }
    }

    /// Called when data arrive, and at least once a second.
    static int watch(void* context, curl_off_t announced, curl_off_t received, curl_off_t /*announcedUpload*/,
                     curl_off_t /*sent*/) noexcept {
        return static_cast<Download*>(context)->shouldContinue(announced, received) ? 0 : 1;
    }
    static std::size_t receiveHeader(char* /*bytes*/, std::size_t size, std::size_t count, void* context) noexcept {
        return static_cast<Download*>(context)->addHeader(size * count) ? size * count : 0;
    }
    static std::size_t receive(char* bytes, std::size_t size, std::size_t count, void* context) noexcept {
        return static_cast<Download*>(context)->add({bytes, size * count}) ? size * count : 0;
    }

    bool shouldContinue(curl_off_t announced, curl_off_t received) {
        const Clock::time_point now = Clock::now();
        const auto progress =
            static_cast<curl_off_t>(headers_) + received + info<curl_off_t>(CURLINFO_PRETRANSFER_TIME_T);
        if (progress != std::exchange(progress_, progress)) {
            lastProgress_ = now;
        }
        if (now >= end_.load()) {
            return fail("cancelled");
        }
        if (now - start_ >= timeouts_.total) {
            return fail("Timed out");
        }
        if (now - lastProgress_ >= timeouts_.silence) {
            return fail("Timed out waiting for data");
        }
        return std::cmp_less_equal(std::max(announced, received), CurlWebClient::maxBody) || fail(bodyTooLarge);
    }

    bool addHeader(std::size_t size) {
        headers_ += size;
        if (headers_ > CurlWebClient::maxHeaders) {
            return fail("the headers are larger than 256 KiB");
        }
        // libcurl would read the whole body of a refusal without reporting it.
        return proxyRefusal() == 0;
    }

    bool add(std::string_view bytes) {
        if (bytes.size() > CurlWebClient::maxBody - body_.size()) {
            return fail(bodyTooLarge);
        }
        body_ += bytes;
        return true;
    }

    /// Returns the status with which a proxy has refused to connect; 0 otherwise.
    long proxyRefusal() const {
        constexpr long firstRefusal = 300;
        const auto status = info<long>(CURLINFO_HTTP_CONNECTCODE);
        return status >= firstRefusal ? status : 0;
    }

    bool fail(const char* error) {
        error_ = error;
        return false;
    }

    static constexpr const char* bodyTooLarge = "the body is larger than 16 MiB";

    const Curl& curl_;
    const CurlWebClient::Timeouts& timeouts_;
    const std::atomic<Clock::time_point>& end_;
    const Clock::time_point start_ = Clock::now();
    /// Changes with every header, byte of the body and connection.
    curl_off_t progress_ = 0;
    Clock::time_point lastProgress_ = start_;
    std::size_t headers_ = 0;
    std::string body_;
    const char* error_ = nullptr;
    std::array<char, CURL_ERROR_SIZE> message_{};
    bool isSetUp_ = false;
    std::unique_ptr<CURL, decltype(Curl::easyCleanup)> easy_;
};

} // namespace

Expected<Data, WebError> CurlWebClient::get(const URL& address) const {
    static const std::optional<Curl> curl = loadCurl();
    if (!curl) {
        return webError("libcurl.so.4 cannot be loaded");
    }
    return Download(*curl, address, timeouts_, end_).run();
}

void CurlWebClient::endSoon() {
    Clock::time_point never = Clock::time_point::max();
    end_.compare_exchange_strong(never, Clock::now() + timeouts_.end);
}

} // namespace platform
