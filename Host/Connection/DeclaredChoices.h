// What a user chose, against what an extension declares. Failures are `usage` and name what is accepted.
#pragma once

#include "Host/Connection/Messages.h"

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace host {

/// The widget of that kind.
platform::Outcome<WidgetInfo> declaredWidget(const std::vector<WidgetInfo>& widgets, const std::string& kind);

/// No extension has it.
platform::Failure unknownWidget(const std::string& kind);

/// The family, where the widget has it; without one medium, or the first where there is no medium.
platform::Outcome<std::string> declaredFamily(const WidgetInfo& widget, const std::optional<std::string>& family);

/// Nothing if the widget has each parameter, and an enumeration the choice. What an entity parameter names may have
/// gone, or not have come yet.
std::optional<platform::Failure> checkSettings(const WidgetInfo& widget,
                                               const std::map<std::string, std::string>& settings);

} // namespace host
