// A web or file address, and its parts.
//
// Parsing encodes what is not encoded, and refuses an address that would change its meaning:
//
// - Empty text is not a URL. The text before the first ":" (if none of "/ ? # [ ] @" comes first) must be a scheme, an
//   ASCII letter followed by letters, digits, "+", "-" and ".", or the whole text is not a URL.
// - "//" starts the authority, which ends at "/", "?" or "#". User information ends at the authority's last "@" and
//   splits at its first ":". A "[" … "]" is an IP literal, after which only the end or ":" may follow. A port is digits
//   only (or empty), else the text is not a URL.
// - A component (user, password, path, query, fragment) with a character that it does not allow is percent-encoded as a
//   whole, "%" included; the other components stay byte for byte.
// - A host with other characters goes through IDNA (UTS 46, non-transitional processing) and must come out as a valid
//   ASCII host, else the text is not a URL. ASCII case is never changed.
//
// Query items are the query split at "&" and each at its first "=": an item without "=" has no value, an empty query
// has no items, "a&&b" has an empty-named item in the middle. Only "%HH" is decoded; "+" is not a blank. Items that are
// set keep letters, digits and "- . _ ~ ! $ ' ( ) * + , ; : @ / ?"; everything else is percent-encoded.
//
// Source: RFC 3986 for the syntax, UTS 46 for hosts.
//
// A URL is an immutable value; any thread.
#pragma once

#include "Platform/Foundation/URLSyntax.h"

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace platform {

struct URLQueryItem {
    std::string name;
    std::optional<std::string> value;
    friend bool operator==(const URLQueryItem&, const URLQueryItem&) = default;
};

class URL {
  public:
    static std::optional<URL> parse(std::string_view text);

    /// Returns the "file" URL of an absolute path. A path ending in "/" is that of a folder. Does not access the disk.
    static URL filePath(std::string_view path);

    /// Returns this URL with `component` appended to its path, joined by exactly one "/". A "/" in `component`
    /// separates; every other character that a path does not allow is percent-encoded.
    URL appending(std::string_view component) const;

    /// The whole address, percent-encoded.
    const std::string& absoluteString() const { return text_; }

    std::optional<std::string_view> scheme() const;
    /// Returns the host with its "%HH" decoded and without the brackets of an IP literal; nothing without an authority
    /// or with an empty one; empty if only the host is missing ("http://user@/").
    std::optional<std::string> host() const;
    /// Returns the path with its "%HH" decoded and without a trailing "/"; the file-system path of a file URL.
    std::string path() const;
    /// Returns the query, percent-encoded; nothing without a "?".
    std::optional<std::string_view> encodedQuery() const;
    /// Returns nothing without a "?".
    std::optional<std::vector<URLQueryItem>> queryItems() const;
    /// Returns this URL with another query and every other part unchanged. Without items, the query is empty.
    URL withQueryItems(const std::vector<URLQueryItem>& items) const;

    friend bool operator==(const URL& a, const URL& b) { return a.text_ == b.text_; }

  private:
    URL(std::string text, const URLParts& parts) : text_(std::move(text)), parts_(parts) {}

    std::string text_;
    URLParts parts_;
};

} // namespace platform
