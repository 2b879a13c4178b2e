// `widgethost describe` and `widgethost options`: what extensions offer, for people and as JSON.
#pragma once

#include "Host/Commands/Extensions.h"
#include "Host/Commands/Output.h"

#include <optional>
#include <string>

namespace host {

/// The widgets of every extension; as JSON one line an extension, as it describes itself.
std::optional<Failure> describe(const ExtensionChoice& choice, TextFormat format);

struct OptionsRequest {
    std::string kind;
    std::string parameter;
    /// Only those that match this text.
    std::optional<std::string> matching;
};

/// A parameter's choices.
std::optional<Failure> listOptions(const ExtensionChoice& choice, const OptionsRequest& request, TextFormat format);

} // namespace host
