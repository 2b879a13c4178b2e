// The arrangement as JSON, for its file and for `list --json`:
//
//     {"version":1,"nextId":4,"instances":[
//     {"id":1,"extension":"net.foliovault.widgets","kind":"FavoritesWidget","family":"medium",
//      "configuration":{"group":"Work"},"output":"DP-1","position":[40,60]},
//     …
//     ]}
//
// one instance a line, so that people can read and compare it. "configuration", "output" and "position" may be left
// out, and so may "nextId", which is then one more than the greatest id; a smaller one counts as that too. Beside them
// may stand "locked":true and "renderingMode":"tinted" or "vibrant". Reading is
// strict: a member that is of another type or there twice, two instances of one id, and what breaks a bound make the
// file a broken one. Members with other names, which a later program may write under the same version, are kept.
#pragma once

#include "Host/Arrangement/Arrangement.h"
#include "Platform/Foundation/Failure.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace host {

/// The form that this program reads and writes. A greater one is for changes that it would misunderstand.
inline constexpr int arrangementVersion = 1;

/// A file with more bytes than this counts as broken.
inline constexpr std::size_t maxArrangementFileSize = std::size_t{1} << 20U;

/// Fails with `malformed` for a broken file and with `unreadable` for one of a newer version; the message says in a few
/// words what is wrong and where.
platform::Outcome<Arrangement> arrangementFromJson(std::string_view json);

/// The file's whole content. It may be larger than what is read.
std::string arrangementJson(const Arrangement& arrangement);

/// The list alone, in one line without its end.
std::string instancesJson(const Arrangement& arrangement);

} // namespace host
