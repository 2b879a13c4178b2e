// The arrangement as JSON, for its file and for `list --json`:
//
//     {"version":1,"nextId":4,"instances":[
//     {"id":1,"extension":"net.foliovault.widgets","kind":"FavoritesWidget","family":"medium",
//      "configuration":{"group":"Work"},"output":"DP-1","position":[40,60]},
//     …
//     ]}
//
// One instance per line, for reading and comparing. Optional: "configuration", "output", "position", "nextId" (raised
// to one more than the largest id), "locked":true, and "renderingMode":"tinted" or "vibrant".
//
// A file is broken if a member has another type or occurs twice, two instances have one id, or a limit is exceeded.
// Unknown members are kept: a later program may write them under the same version.
#pragma once

#include "Host/Arrangement/Arrangement.h"
#include "Platform/Foundation/Failure.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace host {

/// The version that this program reads and writes. A greater one marks changes that it would misunderstand.
inline constexpr int arrangementVersion = 1;

/// In bytes. A larger file counts as broken.
inline constexpr std::size_t maxArrangementFileSize = std::size_t{1} << 20U;

/// Fails with `malformed` for a broken file and with `unreadable` for a newer version; the message says in a few words
/// what is wrong and where.
platform::Outcome<Arrangement> arrangementFromJson(std::string_view json);

/// Returns the content of the file, which may exceed `maxArrangementFileSize`.
std::string arrangementJson(const Arrangement& arrangement);

/// Returns the instances alone, on one line without a newline.
std::string instancesJson(const Arrangement& arrangement);

} // namespace host
