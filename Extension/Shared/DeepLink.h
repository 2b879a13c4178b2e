// Links into the application, in its own URL schemes, tagged with the widget they come from.
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

/// Whether `url` is one for the web, of the scheme "http" or "https".
bool isWebAddress(const platform::URL& url);

/// `url` with the tag appended to its query, where its scheme is one of the application's; else `url` unchanged. A tag
/// that is there already stays beside the new one.
platform::URL taggedForWidget(const platform::URL& url, std::string_view widgetIdentifier);

/// The link that opens the address `text`: for the web, the application's open-url link around it; an address of the
/// application's own is tagged; any other comes back unchanged. Nothing if `text` is no URL.
std::optional<platform::URL> foliovaultOpenURL(std::string_view text, std::string_view widgetIdentifier);

/// `x-foliovault://COMMAND?NAME=VALUE`, untagged; nothing if that makes no URL.
std::optional<platform::URL> commandURL(std::string_view command, std::string_view name, std::string_view value);

} // namespace foliovault
