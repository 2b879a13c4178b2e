// Checks what a user chose against what an extension declares. Failures are `usage` and list what is accepted.
#pragma once

#include "Host/Connection/Messages.h"

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace host {

/// Returns the widget of that kind.
platform::Outcome<WidgetInfo> declaredWidget(const std::vector<WidgetInfo>& widgets, const std::string& kind);

/// The failure if no extension has the widget.
platform::Failure unknownWidget(const std::string& kind);

/// Returns the family if the widget has it. The default is medium, or else the widget's first one.
platform::Outcome<std::string> declaredFamily(const WidgetInfo& widget, const std::optional<std::string>& family);

/// Returns nothing if the widget has each parameter, and each enumeration the choice. Does not check the choices of
/// entity parameters, which may be removed or added later.
std::optional<platform::Failure> checkSettings(const WidgetInfo& widget,
                                               const std::map<std::string, std::string>& settings);

} // namespace host
