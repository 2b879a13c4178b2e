// `widgethost add`, `remove`, `edit`, `move` and `list`: the arrangement, from the command line.
//
// What is chosen is checked against what the extension declares before anything is changed. The change itself is a
// value (ArrangementChange) that goes to whoever holds the arrangement: its file.
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

/// Prints the new instance's id.
std::optional<Failure> addWidget(const ExtensionChoice& choice, const AddRequest& request);

std::optional<Failure> editWidget(const ExtensionChoice& choice, const Edit& edit);

/// Makes a change that no extension need be asked about.
std::optional<Failure> changeArrangement(const ArrangementChange& change);

/// A table for people; as JSON an array, in one line.
std::optional<Failure> listArrangement(TextFormat format);

} // namespace host
