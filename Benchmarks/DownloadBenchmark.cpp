// download_benchmark ROUNDS ADDRESS: one download, connection and all, by our client and by libcurl alone with the same
// options, by turns.

#include "Benchmarks/Rounds.h"

#include "Platform/Foundation/WebClient.h"

#include <csignal>
#include <curl/curl.h>
#include <string>

namespace {

[[noreturn]] void fail(const char* words) {
    std::fprintf(stderr, "%s\n", words);
    std::exit(1);
}

void download(const platform::URL& address) {
    static const platform::CurlWebClient client;
    const auto body = client.get(address);
    if (!body) {
        fail(body.error().description.c_str());
    }
}

std::size_t append(char* bytes, std::size_t size, std::size_t count, void* body) {
    static_cast<std::string*>(body)->append(bytes, size * count);
    return size * count;
}

void downloadByLibcurl(const std::string& address) {
    std::string body;
    CURL* const easy = curl_easy_init();
    curl_easy_setopt(easy, CURLOPT_URL, address.c_str());
    curl_easy_setopt(easy, CURLOPT_FOLLOWLOCATION, 1L);
    curl_easy_setopt(easy, CURLOPT_ACCEPT_ENCODING, "gzip, deflate");
    curl_easy_setopt(easy, CURLOPT_CAINFO, std::getenv("SSL_CERT_FILE"));
    curl_easy_setopt(easy, CURLOPT_NOSIGNAL, 1L);
    curl_easy_setopt(easy, CURLOPT_WRITEFUNCTION, &append);
    curl_easy_setopt(easy, CURLOPT_WRITEDATA, &body);
    const CURLcode code = curl_easy_perform(easy);
    curl_easy_cleanup(easy);
    if (code != CURLE_OK) {
        fail(curl_easy_strerror(code));
    }
}

} // namespace

int main(int argc, char** argv) {
    const auto address = argc == 3 ? platform::URL::parse(argv[2]) : std::nullopt;
    if (!address) {
        fail("usage: download_benchmark ROUNDS ADDRESS");
    }
    std::signal(SIGPIPE, SIG_IGN);
    benchmarks::timeByTurns(
        {{"ours", [&] { download(*address); }}, {"libcurl", [&] { downloadByLibcurl(address->absoluteString()); }}},
        std::atoi(argv[1]));
}
