// The findings of `widgethost doctor` as text or JSON.
//
//     ok       Landlock        version 2: confines extensions in files
//     PROBLEM  links           x-notes: no application opens it
//                              → install the application, or choose one: xdg-mime default …
#pragma once

#include "Host/Commands/Finding.h"

#include <string>

namespace host {

enum class Colouring { plain, colours };

/// Returns one line per finding, one below it with the advice, and a last line with the counts.
std::string doctorReport(const Findings& findings, Colouring colouring);

/// Returns one line: an array of objects with "check", "state" ("ok", "note" or "problem"), "found" and "advice".
std::string doctorJson(const Findings& findings);

} // namespace host
