// A URL taken apart, to read and change its query, or one put together from nothing.
//
// Components of a URL keep every part of it byte for byte: user information, port, path and fragment, and scheme, host
// and query as long as they are not set anew.
//
// Query items are read by splitting at "&" and each at its first "=": an item without "=" has no value, an empty query
// has no items, "a&&b" has an empty-named item in the middle. Only "%HH" is decoded; "+" is no blank.
//
// Query items that are set keep letters, digits and "- . _ ~ ! $ ' ( ) * + , ; : @ / ?"; everything else is
// percent-encoded,
// "&", "=", "%", "#" and the blank among it.
#pragma once

#include "Platform/Foundation/PercentEncoding.h"
#include "Platform/Foundation/URL.h"

#include <optional>
#include <string>
#include <vector>

namespace platform {

struct URLQueryItem {
    std::string name;
    std::optional<std::string> value;
    friend bool operator==(const URLQueryItem&, const URLQueryItem&) = default;
};

class URLComponents {
  public:
    /// No components at all.
    URLComponents() = default;
    /// The components of `url`; nothing if it cannot be split.
    static std::optional<URLComponents> of(const URL& url);

    /// `url` with one more query item after those that it has, all encoded as `setQueryItems` does; `url` itself where
    /// that makes no URL. The same as taking it apart, and much cheaper for a URL without a query.
    static URL appendingQueryItem(const URL& url, std::string_view name, std::string_view value);

    std::optional<std::string> scheme;
    /// As `URL::host` has it: decoded, an IP literal without its brackets.
    std::optional<std::string> host;

    /// Nothing where there is no query.
    std::optional<std::vector<URLQueryItem>> queryItems() const;
    /// Replaces the query; no items make an empty one.
    void setQueryItems(const std::vector<URLQueryItem>& items);

    /// The URL that the components make. A host outside ASCII goes through IDNA; in one of ASCII, what a host cannot
    /// hold is percent-encoded, and one with a ":" is an IP literal. Nothing if they make none: a scheme that is no
    /// scheme, a host that is none, or a path that without its scheme or host
    /// would be read as one.
    std::optional<URL> url() const;

  private:
    bool hasSchemeAndHostOfText() const;
    std::optional<URL> rebuiltURL() const;

    /// The address that was taken apart, its query as it is now; scheme and host may have been set since.
    std::string text_;
    URLParts parts_;
};

} // namespace platform
