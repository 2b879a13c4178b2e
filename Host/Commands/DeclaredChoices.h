// What a user chose, against what the extension declares. A wrong choice is a failure that names what is accepted.
#pragma once

#include "Host/Commands/Extensions.h"
#include "Host/Connection/Messages.h"

#include <map>
#include <optional>
#include <string>

namespace host {

/// The widget of that kind, as the extension describes it.
Outcome<WidgetInfo> declaredWidget(ExtensionConnection& connection, const std::string& kind);

/// The family, where the widget has it; without one medium, or the first where there is no medium.
Outcome<std::string> declaredFamily(const WidgetInfo& widget, const std::optional<std::string>& family);

/// Whether the widget has each parameter, and an enumeration the choice. What an entity parameter names may have gone,
/// or not have come yet.
std::optional<Failure> checkSettings(const WidgetInfo& widget, const std::map<std::string, std::string>& settings);

} // namespace host
