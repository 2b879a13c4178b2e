// What a tile's menu has.
#pragma once

#include "Host/Arrangement/Arrangement.h"
#include "Host/Connection/Messages.h"
#include "Host/Desktop/Menu.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace host {

struct TileMenuState {
    Instance instance;
    /// As the extension describes it; null where that is not known.
    const WidgetInfo* widget = nullptr;
    /// The link that the menu was asked for on.
    std::optional<std::string> url;
    bool isLocked = false;
    std::string renderingMode;
};

struct TileMenuActs {
    std::function<void()> edit;
    std::function<void()> reload;
    std::function<void()> remove;
    std::function<void()> addWidgets;
    std::function<void(const ArrangementChange& change)> change;
};

std::vector<MenuEntry> tileMenu(const TileMenuState& state, const TileMenuActs& acts);

/// What people call a family.
std::string familyTitle(const std::string& family);

} // namespace host
