#include "Platform/Foundation/URLComponents.h"

#include <algorithm>

namespace platform {

namespace {

constexpr AsciiSet queryItemCharacters = asciiLettersAndDigits.with("-._~!$'()*+,;:@/?");

/// Appends a host as an address holds it; false if it is none.
bool appendHost(std::string& out, std::string_view host) {
    if (host.find(':') != std::string_view::npos) {
        out += '[';
        appendPercentEncoded(out, host, urlAddressCharacters);
        out += ']';
    } else if (std::all_of(host.begin(), host.end(), isAscii)) {
        appendPercentEncoded(out, host, urlHostCharacters);
    } else {
        const std::optional<std::string> ascii = urlHost(host);
        out += ascii.value_or(std::string());
        return ascii.has_value();
    }
    return true;
}

/// Whether `host`, as people write it, is what `encoded` stands for.
bool isSameHost(std::string_view host, std::string_view encoded) {
    const bool isPlain = !encoded.starts_with('[') && encoded.find('%') == std::string_view::npos;
    return isPlain ? host == encoded : host == decodedURLHost(encoded);
}

/// Whether `path` is read as a path again where only `parts` stands before it.
bool canHoldPath(const URLParts& parts, std::string_view path) {
    if (parts.hasAuthority()) {
        return path.empty() || path.starts_with('/');
    }
    const std::size_t delimiter = path.find_first_of(":/@");
    const bool readsAsScheme = parts.schemeEnd == 0 && delimiter != std::string_view::npos && path[delimiter] == ':';
    return !readsAsScheme && !path.starts_with("//");
}

} // namespace

std::optional<URLComponents> URLComponents::of(const URL& url) {
    constexpr std::size_t roomForQuery = 48;
    std::optional<URLComponents> components(std::in_place);
    components->text_.reserve(url.text_.size() + roomForQuery);
    components->text_ = url.text_;
    components->parts_ = url.parts_;
    components->scheme = url.scheme();
    components->host = url.host();
    return components;
}

URL URLComponents::appendingQueryItem(const URL& url, std::string_view name, std::string_view value) {
    if (!url.parts_.query(url.text_).empty()) {
        auto components = of(url);
        if (!components) {
            return url;
        }
        auto items = components->queryItems().value_or(std::vector<URLQueryItem>());
        items.push_back({std::string(name), std::string(value)});
        components->setQueryItems(items);
        return components->url().value_or(url);
    }
    std::string text;
    text.reserve(url.text_.size() + name.size() + value.size() + 2);
    text.append(url.text_, 0, url.parts_.pathEnd);
    text += '?';
    appendPercentEncoded(text, name, queryItemCharacters);
    text += '=';
    appendPercentEncoded(text, value, queryItemCharacters);
    URLParts parts = url.parts_;
    parts.queryEnd = text.size();
    text += url.parts_.fragment(url.text_);
    return {std::move(text), parts};
}

std::optional<std::vector<URLQueryItem>> URLComponents::queryItems() const {
    std::string_view rest = parts_.query(text_);
    if (rest.empty()) {
        return std::nullopt;
    }
    rest.remove_prefix(1);
    std::vector<URLQueryItem> items;
    bool isMore = !rest.empty();
    while (isMore) {
        const std::string_view item = rest.substr(0, rest.find('&'));
        isMore = item.size() < rest.size();
        rest.remove_prefix(std::min(item.size() + 1, rest.size()));

        const std::string_view name = item.substr(0, item.find('='));
        URLQueryItem& read = items.emplace_back(URLQueryItem{.name = percentDecoded(name)});
        if (name.size() < item.size()) {
            read.value = percentDecoded(item.substr(name.size() + 1));
        }
    }
    return items;
}

void URLComponents::setQueryItems(const std::vector<URLQueryItem>& items) {
    const std::string fragment(parts_.fragment(text_));
    text_.resize(parts_.pathEnd);
    char delimiter = '?';
    for (const URLQueryItem& item : items) {
        text_ += delimiter;
        delimiter = '&';
        appendPercentEncoded(text_, item.name, queryItemCharacters);
        if (item.value) {
            text_ += '=';
            appendPercentEncoded(text_, *item.value, queryItemCharacters);
        }
    }
    if (items.empty()) {
        text_ += delimiter;
    }
    parts_.queryEnd = text_.size();
    text_ += fragment;
}

std::optional<URL> URLComponents::url() const {
    if (!hasSchemeAndHostOfText()) {
        return rebuiltURL();
    }
    return text_.empty() ? std::nullopt : std::optional(URL(text_, parts_));
}

bool URLComponents::hasSchemeAndHostOfText() const {
    if (scheme.has_value() != parts_.hasScheme() || host.has_value() != parts_.hasHost()) {
        return false;
    }
    return (!scheme || *scheme == parts_.scheme(text_)) && (!host || isSameHost(*host, parts_.host(text_)));
}

std::optional<URL> URLComponents::rebuiltURL() const {
    std::string text;
    URLParts parts;
    if (scheme) {
        if (!isURLScheme(*scheme)) {
            return std::nullopt;
        }
        text = *scheme;
        parts.schemeEnd = text.size();
        text += ':';
    }
    const std::string_view userInfo = parts_.userInfo(text_);
    const std::string_view port = parts_.port(text_);
    const bool hadEmptyAuthority = parts_.hasAuthority() && !parts_.hasHost();
    if (host || hadEmptyAuthority || !userInfo.empty() || !port.empty()) {
        text += "//";
        parts.authorityBegin = text.size();
        text += userInfo;
    }
    parts.hostBegin = text.size();
    if (host && !appendHost(text, *host)) {
        return std::nullopt;
    }
    parts.hostEnd = text.size();
    text += port;
    parts.pathBegin = text.size();
    if (!canHoldPath(parts, parts_.path(text_))) {
        return std::nullopt;
    }
    const auto moved = [&](std::size_t offset) { return offset - parts_.pathBegin + parts.pathBegin; };
    text.append(text_, parts_.pathBegin);
    parts.pathEnd = moved(parts_.pathEnd);
    parts.queryEnd = moved(parts_.queryEnd);
    return text.empty() ? std::nullopt : std::optional(URL(std::move(text), parts));
}

} // namespace platform
