// A face as a file: one line of JSON, then the picture as PNG.
//
//     {"version":1,"extension":"net.foliovault.widgets","kind":"FavoritesWidget","family":"medium",
//      "configuration":{"group":"Work"},"scale":2,"scheme":"dark","mode":"fullColor","redaction":"none",
//      "contrast":"normal","accent":[0.5,0,0.5,1],"made":758100000,"reload":758100300,"widgetURL":"…",
//      "parts":[{"role":"link","frame":[12,40,340,21],"name":"Inbox","description":"3 items","url":"…"}]}
//
// (without the line breaks). Dates are seconds since the reference date. "accent" and "widgetURL" may be left out, and
// a part's "description" and "url". Members with other names are passed over.
#pragma once

#include "Host/Arrangement/Arrangement.h"
#include "Host/Pictures/Face.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace host {

/// Bytes of the line, and of the whole file.
inline constexpr std::size_t greatestFaceHead = std::size_t{1} << 20U;
inline constexpr std::size_t greatestFaceFile = std::size_t{32} << 20U;
inline constexpr std::size_t greatestPartCount = 1000;
inline constexpr double greatestFaceScale = 8;

/// The file's content. Empty where the face breaks one of the bounds, or has no picture.
std::string storedFace(const Face& face, const Instance& instance);

/// The face, if it was made for a widget of this extension, kind, family and configuration and is as large as that
/// family is. Whatever is wrong with the file, it is nothing.
std::optional<Face> readStoredFace(std::string_view bytes, const Instance& instance);

} // namespace host
