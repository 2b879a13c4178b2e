// What `widgethost doctor` found, for people and for programs.
//
//     ok       Landlock     version 2: confines extensions in files
//     PROBLEM  links        x-notes: no application opens it
//                           → install the application, or choose one: xdg-mime default NAME.desktop
//                             x-scheme-handler/x-notes
#pragma once

#include "Host/Commands/Finding.h"

#include <string>

namespace host {

enum class Colouring { plain, colours };

/// Lines of at most 100 columns, but for words that are longer than that, and a last one that counts.
std::string doctorReport(const Findings& findings, Colouring colouring);

/// An array of objects with "check", "state" ("ok", "note", "problem"), "found" and "advice", in one line.
std::string doctorJson(const Findings& findings);

} // namespace host
