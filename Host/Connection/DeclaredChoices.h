// What a user chose, against what an extension declares. Each error is one clear line that names what is accepted.
#pragma once

#include "Host/Connection/Messages.h"

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace host {

/// The widget of that kind.
Message<WidgetInfo> declaredWidget(const std::vector<WidgetInfo>& widgets, const std::string& kind);

/// What there is to say where no extension has it.
std::string unknownWidget(const std::string& kind);

/// The family, where the widget has it; without one medium, or the first where there is no medium.
Message<std::string> declaredFamily(const WidgetInfo& widget, const std::optional<std::string>& family);

/// Nothing where the widget has each parameter, and an enumeration the choice. What an entity parameter names may have
/// gone, or not have come yet.
std::optional<std::string> checkSettings(const WidgetInfo& widget, const std::map<std::string, std::string>& settings);

} // namespace host
