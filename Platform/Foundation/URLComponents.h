// A URL taken apart, to read and change its query.
//
// Query items are read by splitting at "&" and each at its first "=": an item without "=" has no value, an empty query has
// no items, "a&&b" has an empty-named item in the middle. Only "%HH" is decoded; "+" is no blank.
//
// Query items that are set keep letters, digits and "- . _ ~ ! $ ' ( ) * + , ; : @ / ?"; everything else is percent-encoded,
// "&", "=", "%", "#" and the blank among it.
#pragma once

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

    std::optional<std::string> scheme;
    std::optional<std::string> host;

    /// Nothing where there is no query.
    std::optional<std::vector<URLQueryItem>> queryItems() const;
    void setQueryItems(const std::vector<URLQueryItem>& items);
    /// Sets items whose names and values are percent-encoded already; they are taken as they stand.
    void setPercentEncodedQueryItems(const std::vector<URLQueryItem>& items);

    /// The URL that the components make; nothing if they make none.
    std::optional<URL> url() const;
};

/// `text` with every byte outside the ASCII letters, the digits and `alsoAllowed` written as "%" and two upper-case
/// hexadecimal digits.
std::string percentEncoded(std::string_view text, std::string_view alsoAllowed);

/// `text` with every well-formed "%HH" decoded and everything else as it stands.
std::string percentDecoded(std::string_view text);

} // namespace platform
