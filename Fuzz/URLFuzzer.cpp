// Reads any bytes as an address. A valid one is the same after writing and reading, and keeps its parts when tagged.

#include "Platform/Foundation/URL.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace {

using platform::URL;

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

/// Requires that reading the text of `url` returns `url`.
void requireStable(const URL& url) {
    const auto again = URL::parse(url.absoluteString());
    require(again && haveSameParts(*again, url), "reads its own text otherwise", url);
}

URL tagged(const URL& url) {
    auto items = url.queryItems().value_or(std::vector<platform::URLQueryItem>());
    items.push_back({"widget", "a&b=ä"});
    const URL result = url.withQueryItems(items);
    requireStable(result);
    require(result.queryItems() == items, "loses query items", url);
    require(result.scheme() == url.scheme() && result.host() == url.host() && result.path() == url.path(),
            "changes when tagged", url);
    return result;
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
    tagged(tagged(*url));
    return 0;
}
