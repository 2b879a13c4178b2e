// Links into the application, in its own URL schemes, tagged with the widget that they come from.
//
//   x-foliovault-item://IDENTIFIER               a record of a database
//   x-foliovault-smartgroup://IDENTIFIER         a smart group
//   x-foliovault://open-path?path=…              a database by its file
//   x-foliovault://open-workspace?name=…         a workspace
//   x-foliovault://open-url?location=…&widget=…  a web address
//
// The tag is the query item "widget" with the widget's identifier. All functions are pure; any thread.
#pragma once

#include "Platform/Foundation/URL.h"

#include <optional>
#include <string_view>

namespace foliovault {

/// Whether the scheme of `url` is "http" or "https".
bool isWebAddress(const platform::URL& url);

/// Returns `url` with the tag appended to its query if the scheme is one of the application's, else `url` unchanged. An
/// earlier tag stays beside the new one.
platform::URL taggedForWidget(const platform::URL& url, std::string_view widgetIdentifier);

/// Returns the link that opens the address `text`: a web address in the application's open-url link, an address of the
/// application's own tagged, any other unchanged. Fails if `text` is not a URL.
std::optional<platform::URL> foliovaultOpenURL(std::string_view text, std::string_view widgetIdentifier);

/// Returns `x-foliovault://COMMAND?NAME=VALUE`, untagged. Fails if that makes no URL.
std::optional<platform::URL> commandURL(std::string_view command, std::string_view name, std::string_view value);

} // namespace foliovault
