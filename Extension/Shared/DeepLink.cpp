#include "Extension/Shared/DeepLink.h"

#include "Platform/Foundation/PercentEncoding.h"

#include <algorithm>
#include <array>
#include <string>

namespace foliovault {
namespace {

using platform::URL;

constexpr std::string_view commandScheme = "x-foliovault";
constexpr std::array<std::string_view, 3> taggableSchemes{commandScheme, "x-foliovault-item",
                                                          "x-foliovault-smartgroup"};

/// Returns the scheme in lower case; empty without a scheme.
std::string lowerCasedScheme(const URL& url) {
    std::string lower(url.scheme().value_or(""));
    std::transform(lower.begin(), lower.end(), lower.begin(), platform::asciiLowerCased);
    return lower;
}

} // namespace

bool isWebAddress(const URL& url) {
    const std::string scheme = lowerCasedScheme(url);
    return scheme == "http" || scheme == "https";
}

URL taggedForWidget(const URL& url, std::string_view widgetIdentifier) {
    if (std::find(taggableSchemes.begin(), taggableSchemes.end(), lowerCasedScheme(url)) == taggableSchemes.end()) {
        return url;
    }
    auto items = url.queryItems().value_or(std::vector<platform::URLQueryItem>());
    items.push_back({.name = "widget", .value = std::string(widgetIdentifier)});
    return url.withQueryItems(items);
}

std::optional<URL> foliovaultOpenURL(std::string_view text, std::string_view widgetIdentifier) {
    const auto url = URL::parse(text);
    if (!url) {
        return std::nullopt;
    }
    if (!isWebAddress(*url)) {
        return taggedForWidget(*url, widgetIdentifier);
    }
    // A query allows "&", "=" and "+", but the value of an item must not have them.
    static constexpr auto allowedInLocation = platform::asciiLettersAndDigits.with("-._~!$'()*,;:@/?");
    std::string link(commandScheme);
    link += "://open-url?location=";
    platform::appendPercentEncoded(link, text, allowedInLocation);
    link.append("&widget=").append(widgetIdentifier);
    return URL::parse(link);
}

std::optional<URL> commandURL(std::string_view command, std::string_view name, std::string_view value) {
    const auto url = URL::parse(std::string(commandScheme).append("://").append(command));
    return url ? std::optional(url->withQueryItems({{.name = std::string(name), .value = std::string(value)}}))
               : std::nullopt;
}

} // namespace foliovault
