// Menus from plain values.
#pragma once

#include "Host/Desktop/Objects.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace host {

struct MenuEntry {
    /// Empty for a line between entries.
    std::string label;
    /// Left out, the entry cannot be chosen.
    std::function<void()> act;
    /// Whether it is chosen already, where it is one of several or can be on and off.
    std::optional<bool> isOn;
    /// One of several that exclude each other.
    bool isRadio = false;
    std::vector<MenuEntry> submenu;
};

/// Opens the menu over `widget`, at the pointer, or at its corner where a key asked. The menu goes when it is closed.
void popUpMenu(GtkWidget* widget, const GdkEvent* event, const std::vector<MenuEntry>& entries);

} // namespace host
