#include "Platform/Foundation/URL.h"

#include "Platform/Foundation/PercentEncoding.h"

#include <algorithm>

namespace platform {

namespace {

constexpr AsciiSet queryItemCharacters = asciiLettersAndDigits.with("-._~!$'()*+,;:@/?");

/// Appends a component unchanged, or encoded as a whole if it has a character outside of `allowed`.
void appendComponent(std::string& out, std::string_view component, const AsciiSet& allowed) {
    if (isPercentEncoded(component, allowed)) {
        out += component;
    } else {
        appendPercentEncoded(out, component, allowed);
    }
}

/// Appends a component with its delimiter, the first character of `part`; nothing if `part` is empty.
void appendDelimited(std::string& out, std::string_view part, const AsciiSet& allowed) {
    if (!part.empty()) {
        out += part.front();
        appendComponent(out, part.substr(1), allowed);
    }
}

/// Appends "user:password@", each of the two encoded if necessary.
void appendUserInfo(std::string& out, std::string_view info) {
    if (!info.empty()) {
        const std::string_view names = info.substr(0, info.size() - 1);
        const std::string_view user = names.substr(0, names.find(':'));
        appendComponent(out, user, urlUserCharacters);
        appendDelimited(out, names.substr(user.size()), urlUserCharacters);
        out += info.back();
    }
}

/// Returns the address with its host and every component encoded if necessary; nothing if the host is invalid.
std::optional<std::string> encoded(std::string_view text, const URLParts& parts, const AsciiSet& pathCharacters) {
    std::string out(text.substr(0, parts.hasAuthority() ? parts.authorityBegin : parts.pathBegin));
    if (parts.hasAuthority()) {
        const std::optional<std::string> host = encodedURLHost(parts.host(text));
        if (!host) {
            return std::nullopt;
        }
        appendUserInfo(out, parts.userInfo(text));
        out += *host;
        out += parts.port(text);
    }
    appendComponent(out, parts.path(text), pathCharacters);
    appendDelimited(out, parts.query(text), urlQueryCharacters);
    appendDelimited(out, parts.fragment(text), urlQueryCharacters);
    return out;
}

std::string_view withoutTrailingSlashes(std::string_view path) {
    return path.substr(0, path.find_last_not_of('/') + 1);
}

} // namespace

std::optional<URL> URL::parse(std::string_view text) {
    URLParts parts;
    const URLForm form = splitURL(text, parts);
    if (form == URLForm::invalid) {
        return std::nullopt;
    }
    if (form == URLForm::wellFormed) {
        return URL(std::string(text), parts);
    }
    std::optional<std::string> address = encoded(text, parts, urlPathCharacters);
    if (!address) {
        return std::nullopt;
    }
    URLParts addressParts;
    if (splitURL(*address, addressParts) == URLForm::invalid) {
        // In a path like "[a:b", the ":" would end a scheme once the bracket is encoded.
        constexpr AsciiSet withoutColon = urlHostCharacters.with("@/");
        address = encoded(text, parts, withoutColon);
        splitURL(*address, addressParts);
    }
    return URL(std::move(*address), addressParts);
}

URL URL::filePath(std::string_view path) {
    std::string text = "file://";
    if (!path.starts_with('/')) {
        text += '/';
    }
    appendPercentEncoded(text, path, urlPathCharacters);
    URLParts parts;
    splitURL(text, parts);
    return {std::move(text), parts};
}

URL URL::appending(std::string_view component) const {
    const std::string_view base = withoutTrailingSlashes(parts_.path(text_));
    std::string text = text_.substr(0, parts_.pathBegin + base.size());
    text += '/';
    component.remove_prefix(std::min(component.find_first_not_of('/'), component.size()));
    appendPercentEncoded(text, component, urlPathCharacters);
    URLParts parts = parts_;
    parts.pathEnd = text.size();
    text.append(text_, parts_.pathEnd);
    parts.queryEnd = parts.pathEnd + parts_.query(text_).size();
    return {std::move(text), parts};
}

std::optional<std::string_view> URL::scheme() const {
    return parts_.hasScheme() ? std::optional(parts_.scheme(text_)) : std::nullopt;
}

std::optional<std::string> URL::host() const {
    return parts_.hasHost() ? std::optional(decodedURLHost(parts_.host(text_))) : std::nullopt;
}

std::string URL::path() const {
    const std::string_view path = parts_.path(text_);
    const std::string_view bare = withoutTrailingSlashes(path);
    return percentDecoded(bare.empty() ? path.substr(0, 1) : bare);
}

std::optional<std::string_view> URL::encodedQuery() const {
    const std::string_view query = parts_.query(text_);
    return query.empty() ? std::nullopt : std::optional(query.substr(1));
}

std::optional<std::vector<URLQueryItem>> URL::queryItems() const {
    std::optional<std::string_view> rest = encodedQuery();
    if (!rest) {
        return std::nullopt;
    }
    std::vector<URLQueryItem> items;
    for (bool isMore = !rest->empty(); isMore;) {
        const std::string_view item = rest->substr(0, rest->find('&'));
        isMore = item.size() < rest->size();
        rest->remove_prefix(std::min(item.size() + 1, rest->size()));

        const std::string_view name = item.substr(0, item.find('='));
        URLQueryItem& read = items.emplace_back(URLQueryItem{.name = percentDecoded(name)});
        if (name.size() < item.size()) {
            read.value = percentDecoded(item.substr(name.size() + 1));
        }
    }
    return items;
}

URL URL::withQueryItems(const std::vector<URLQueryItem>& items) const {
    std::string text = text_.substr(0, parts_.pathEnd) + (items.empty() ? "?" : "");
    for (const URLQueryItem& item : items) {
        text += text.size() == parts_.pathEnd ? '?' : '&';
        appendPercentEncoded(text, item.name, queryItemCharacters);
        if (item.value) {
            text += '=';
            appendPercentEncoded(text, *item.value, queryItemCharacters);
        }
    }
    URLParts parts = parts_;
    parts.queryEnd = text.size();
    text += parts_.fragment(text_);
    return {std::move(text), parts};
}

} // namespace platform
