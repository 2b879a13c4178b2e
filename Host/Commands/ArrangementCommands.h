// `widgethost add`, `remove`, `edit`, `move` and `list`: the arrangement, from the command line.
//
// Checks settings against what the extension declares before it changes anything. A change is an `ArrangementChange`,
// applied to the file, or by the running host.
#pragma once

#include "Host/Arrangement/Arrangement.h"
#include "Host/Commands/Extensions.h"
#include "Host/Commands/Output.h"

#include <optional>
#include <string>

namespace host {

struct AddRequest {
    std::string kind;
    std::optional<std::string> family;
    Settings settings;
    std::optional<std::string> output;
    std::optional<Position> position;
};

/// Places a widget and prints its id.
std::optional<Failure> addWidget(const ExtensionChoice& choice, const AddRequest& request);

std::optional<Failure> editWidget(const ExtensionChoice& choice, const Edit& edit);

/// Makes a change that needs no extension.
std::optional<Failure> changeArrangement(const ArrangementChange& change);

/// Prints a table, or a JSON array on one line.
std::optional<Failure> listArrangement(TextFormat format);

} // namespace host
