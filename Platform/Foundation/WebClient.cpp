#include "Platform/Foundation/WebClient.h"

#include "Platform/Foundation/Curl.h"

#include <array>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string_view>
#include <utility>

#include <sys/eventfd.h>
#include <sys/mman.h>

namespace platform {

namespace {

using Clock = std::chrono::steady_clock;

const char* nonEmptyVariable(const char* name) {
    const char* const value = std::getenv(name);
    return value != nullptr && *value != '\0' ? value : nullptr;
}

Unexpected<WebError> webError(std::string_view description) {
    return Unexpected{WebError{std::string(description)}};
}

/// Room for the largest body. It costs memory only as far as it is filled, grows without being copied, and goes back to
/// the system with the last share of what was filled, whatever the heap keeps.
class BodyBuffer {
  public:
    BodyBuffer() {
        void* const pages = mmap(nullptr, CurlWebClient::greatestBody, PROT_READ | PROT_WRITE,
                                 MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
        if (pages != MAP_FAILED) {
            pages_ = std::shared_ptr<char>(static_cast<char*>(pages),
                                           [](char* start) { munmap(start, CurlWebClient::greatestBody); });
        }
    }

    bool isThere() const { return pages_ != nullptr; }
    std::size_t room() const { return CurlWebClient::greatestBody - size_; }

    /// `bytes` must fit.
    void append(std::string_view bytes) {
        std::memcpy(pages_.get() + size_, bytes.data(), bytes.size());
        size_ += bytes.size();
    }

    Data content() const { return {pages_, std::string_view(pages_.get(), size_)}; }

  private:
    std::shared_ptr<char> pages_;
    std::size_t size_ = 0;
};

/// One address on its way here, with handles of its own that it releases when it ends.
class Download {
  public:
    Download(const Curl& curl, const URL& address, std::chrono::seconds patience)
        : curl_(curl), multi_(curl.multiInit(), curl.multiCleanup), easy_(curl.easyInit(), curl.easyCleanup) {
        if (multi_ && easy_ && body_.isThere()) {
            setUp(address, patience);
            curl_.multiAddHandle(multi_.get(), easy_.get());
        }
    }
    Download(const Download&) = delete;
    Download& operator=(const Download&) = delete;
    ~Download() {
        if (multi_ && easy_) {
            curl_.multiRemoveHandle(multi_.get(), easy_.get());
        }
    }

    /// Runs to the body or an error, or until `end`, which may come nearer when `endIsNear` becomes readable.
    Expected<Data, WebError> run(const FileDescriptor& endIsNear, const std::atomic<Clock::time_point>& end) {
        if (!isSetUp_) {
            return webError("libcurl cannot be set up");
        }
        for (int running = 1; running > 0;) {
            const Clock::time_point now = Clock::now();
            const bool isEnding = end.load() != Clock::time_point::max();
            if (isEnding && now >= end.load()) {
                // The thread that looks a name up is not waited for.
                curl_.easySetopt(easy_.get(), CURLOPT_QUICK_EXIT, 1L);
                return webError("cancelled");
            }
            CURLMcode code = curl_.multiPerform(multi_.get(), &running);
            if (code == CURLM_OK && running > 0) {
                // libcurl wakes up by itself for its own time limits.
                const auto wait = isEnding ? std::chrono::ceil<std::chrono::milliseconds>(end.load() - now)
                                           : std::chrono::milliseconds(std::chrono::hours(1));
                curl_waitfd ending{.fd = endIsNear.get(), .events = CURL_WAIT_POLLIN, .revents = 0};
                code =
                    curl_.multiPoll(multi_.get(), &ending, isEnding ? 0 : 1, static_cast<int>(wait.count()), nullptr);
            }
            if (code != CURLM_OK) {
                return webError(curl_.multiStrerror(code));
            }
        }
        return result();
    }

  private:
    template <class Value>
    void set(CURLoption option, Value value) {
        isSetUp_ = isSetUp_ && curl_.easySetopt(easy_.get(), option, value) == CURLE_OK;
    }

    void setUp(const URL& address, std::chrono::seconds patience) {
        const auto seconds = static_cast<long>(patience.count());
        isSetUp_ = true;
        set(CURLOPT_URL, address.absoluteString().c_str());
        set(CURLOPT_PROTOCOLS_STR, "https");
        set(CURLOPT_REDIR_PROTOCOLS_STR, "https");
        set(CURLOPT_FOLLOWLOCATION, 1L);
        set(CURLOPT_MAXREDIRS, CurlWebClient::greatestRedirects);
        set(CURLOPT_ACCEPT_ENCODING, "gzip, deflate");
        set(CURLOPT_CONNECTTIMEOUT, seconds);
        set(CURLOPT_LOW_SPEED_LIMIT, 1L);
        set(CURLOPT_LOW_SPEED_TIME, seconds);
        set(CURLOPT_NOSIGNAL, 1L);
        set(CURLOPT_ERRORBUFFER, words_.data());
        set(CURLOPT_WRITEDATA, this);
        set(CURLOPT_WRITEFUNCTION, curl_write_callback{&Download::receive});
        trust();
    }

    /// Without a file, null takes libcurl's own away.
    void trust() {
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

    static std::size_t receive(char* bytes, std::size_t size, std::size_t count, void* context) noexcept {
        return static_cast<Download*>(context)->take({bytes, size * count}) ? size * count : 0;
    }

    bool take(std::string_view bytes) {
        curl_off_t announced = 0;
        curl_.easyGetinfo(easy_.get(), CURLINFO_CONTENT_LENGTH_DOWNLOAD_T, &announced);
        isTooLong_ = std::cmp_greater(announced, CurlWebClient::greatestBody) || bytes.size() > body_.room();
        if (isTooLong_) {
            return false;
        }
        body_.append(bytes);
        return true;
    }

    Expected<Data, WebError> result() {
        int remaining = 0;
        const CURLMsg* const message = curl_.multiInfoRead(multi_.get(), &remaining);
        const CURLcode code = message != nullptr ? message->data.result : CURLE_FAILED_INIT;
        if (isTooLong_) {
            return webError("the body is larger than 16 MiB");
        }
        if (code != CURLE_OK) {
            return webError(words_.front() != '\0' ? words_.data() : curl_.easyStrerror(code));
        }
        return body_.content();
    }

    const Curl& curl_;
    std::array<char, CURL_ERROR_SIZE> words_{};
    BodyBuffer body_;
    bool isTooLong_ = false;
    bool isSetUp_ = false;
    std::unique_ptr<CURLM, decltype(Curl::multiCleanup)> multi_;
    std::unique_ptr<CURL, decltype(Curl::easyCleanup)> easy_;
};

} // namespace

CurlWebClient::CurlWebClient(const Patience& patience)
    : patience_(patience), endIsNear_(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {}

Expected<Data, WebError> CurlWebClient::get(const URL& address) const {
    const Curl* const curl = Curl::shared();
    if (curl == nullptr) {
        return webError("libcurl.so.4 cannot be loaded");
    }
    return Download(*curl, address, patience_.withServers).run(endIsNear_, end_);
}

void CurlWebClient::endSoon() {
    Clock::time_point never = Clock::time_point::max();
    if (end_.compare_exchange_strong(never, Clock::now() + patience_.atTheEnd)) {
        eventfd_write(endIsNear_.get(), 1);
    }
}

} // namespace platform
