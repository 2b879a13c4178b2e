// What `widgethost doctor` found, for people and for programs.
//
//     ok       Landlock        version 2: confines extensions in files
//     PROBLEM  links           x-notes: no application opens it
//                              → install the application, or choose one: xdg-mime default …
#pragma once

#include "Host/Commands/Finding.h"

#include <string>

namespace host {

enum class Colouring { plain, colours };

/// A line for each finding, one below it for what to do, and a last line that counts.
std::string doctorReport(const Findings& findings, Colouring colouring);

/// An array of objects with "check", "state" ("ok", "note", "problem"), "found" and "advice", in one line.
std::string doctorJson(const Findings& findings);

} // namespace host
