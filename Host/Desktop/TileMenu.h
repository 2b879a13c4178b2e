// A tile's menu.
#pragma once

#include "Host/Arrangement/Arrangement.h"
#include "Host/Connection/Messages.h"
#include "Host/Desktop/Objects.h"

#include <functional>
#include <optional>
#include <string>

namespace host {

struct TileMenuState {
    Instance instance;
    /// As the extension describes it; null if that is not known.
    const WidgetInfo* widget = nullptr;
    /// The link under the pointer or with the focus.
    std::optional<std::string> url;
    bool isLocked = false;
    std::string renderingMode;
};

struct TileMenuActions {
    std::function<void()> edit;
    std::function<void()> reload;
    std::function<void()> remove;
    std::function<void()> addWidgets;
    std::function<void(const ArrangementChange& change)> change;
};

/// Opens the menu over the window `widget`: at the pointer, or at the focused part if `event` is a key's.
void popUpTileMenu(GtkWidget* widget, const GdkEvent* event, const TileMenuState& state,
                   const TileMenuActions& actions);

/// Returns a family's name for users.
std::string familyTitle(const std::string& family);

} // namespace host
