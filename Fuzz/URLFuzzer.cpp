// Any bytes as an address: what is one reads its own text again, is kept by its components, and can be tagged.

#include "Platform/Foundation/URLComponents.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace {

using platform::URL;
using platform::URLComponents;

void require(bool condition, const char* what, const URL& url) {
    if (!condition) {
        std::fprintf(stderr, "%s: %s\n", what, url.absoluteString().c_str());
        std::abort();
    }
}

bool haveSameParts(const URL& a, const URL& b) {
    return a == b && a.scheme() == b.scheme() && a.host() == b.host() && a.path() == b.path() &&
           a.encodedQuery() == b.encodedQuery();
}

/// `url` is what its own text is read as.
void requireStable(const URL& url) {
    const auto again = URL::parse(url.absoluteString());
    require(again && haveSameParts(*again, url), "reads its own text otherwise", url);
}

URL tagged(const URL& url) {
    auto components = *URLComponents::of(url);
    auto items = components.queryItems().value_or(std::vector<platform::URLQueryItem>());
    items.push_back({"widget", "a&b=ä"});
    components.setQueryItems(items);
    const auto result = components.url();
    require(result.has_value(), "cannot be tagged", url);
    requireStable(*result);
    require(URLComponents::of(*result)->queryItems() == items, "loses query items", url);
    require(result->scheme() == url.scheme() && result->host() == url.host() && result->path() == url.path(),
            "changes when tagged", url);
    return *result;
}

/// Components with the scheme and host of another address make an address or none.
void requireStableWithPartsOf(const URL& other, const URL& url) {
    auto components = *URLComponents::of(url);
    components.scheme = other.scheme();
    components.host = other.host();
    const auto result = components.url();
    if (!result) {
        return;
    }
    requireStable(*result);
    // An empty host may be none, and one outside ASCII gets an ASCII form.
    const std::string host = other.host().value_or("");
    if (!host.empty() && std::all_of(host.begin(), host.end(), platform::isAscii)) {
        require(result->host() == host, "takes another host", *result);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const URL file = URL::filePath(text);
    requireStable(file);
    requireStable(file.appending(text));

    const auto url = URL::parse(text);
    if (!url) {
        return 0;
    }
    requireStable(*url);
    requireStable(url->appending("a/b c"));
    require(URLComponents::of(*url)->url() == url, "changes when taken apart", *url);
    tagged(tagged(*url));
    requireStableWithPartsOf(*URL::parse("x:"), *url);
    requireStableWithPartsOf(*URL::parse("//[::1]"), *url);
    requireStableWithPartsOf(*url, file);
    return 0;
}
