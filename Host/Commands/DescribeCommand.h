// `widgethost describe` and `widgethost options`: what extensions offer, as text or JSON.
#pragma once

#include "Host/Commands/Extensions.h"
#include "Host/Commands/Output.h"

#include <optional>
#include <string>

namespace host {

/// Prints the widgets of every extension; as JSON, each extension's own answer on a line.
std::optional<Failure> describe(const ExtensionChoice& choice, TextFormat format);

struct OptionsRequest {
    std::string kind;
    std::string parameter;
    /// Only choices that match this text.
    std::optional<std::string> matching;
};

/// Prints the choices of a parameter.
std::optional<Failure> listOptions(const ExtensionChoice& choice, const OptionsRequest& request, TextFormat format);

} // namespace host
