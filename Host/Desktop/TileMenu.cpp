#include "Host/Desktop/TileMenu.h"

#include "Platform/Foundation/Localization.h"

#include <array>
#include <utility>

namespace host {
namespace {

using platform::localized;

void copy(const std::string& text) {
    gtk_clipboard_set_text(gtk_clipboard_get(GDK_SELECTION_CLIPBOARD), text.c_str(), static_cast<int>(text.size()));
}

std::vector<MenuEntry> sizes(const TileMenuState& state, const TileMenuActs& acts) {
    std::vector<MenuEntry> entries;
    for (const std::string& family : state.widget->families) {
        entries.push_back({.label = familyTitle(family),
                           .act = [change = acts.change, id = state.instance.id,
                                   family] { change(Resizing{.id = id, .family = family}); },
                           .isOn = family == state.instance.family,
                           .isRadio = true,
                           .submenu = {}});
    }
    return entries;
}

std::vector<MenuEntry> modes(const TileMenuState& state, const TileMenuActs& acts) {
    const std::array<std::pair<const char*, const char*>, 3> all{
        {{"fullColor", "Full Color"}, {"tinted", "Tinted"}, {"vibrant", "Vibrant"}}};
    std::vector<MenuEntry> entries;
    for (const auto& each : all) {
        const std::string mode = each.first;
        entries.push_back({.label = localized(each.second),
                           .act = [change = acts.change, mode] { change(Recoloring{.renderingMode = mode}); },
                           .isOn = mode == state.renderingMode,
                           .isRadio = true,
                           .submenu = {}});
    }
    return entries;
}

} // namespace

std::string familyTitle(const std::string& family) {
    const std::array<std::pair<const char*, const char*>, 4> all{
        {{"small", "Small"}, {"medium", "Medium"}, {"large", "Large"}, {"extraLarge", "Extra Large"}}};
    for (const auto& [name, title] : all) {
        if (family == name) {
            return localized(title);
        }
    }
    return family;
}

std::vector<MenuEntry> tileMenu(const TileMenuState& state, const TileMenuActs& acts) {
    std::vector<MenuEntry> entries;
    const auto add = [&](const char* label, std::function<void()> act, std::vector<MenuEntry> submenu = {}) {
        entries.push_back(
            {.label = localized(label), .act = std::move(act), .isOn = {}, .submenu = std::move(submenu)});
    };
    if (state.widget != nullptr && !state.widget->parameters.empty()) {
        add("Edit…", acts.edit);
    }
    if (state.widget != nullptr && state.widget->families.size() > 1) {
        add("Size", nullptr, sizes(state, acts));
    }
    add("Reload", acts.reload);
    if (state.url) {
        add("Copy Link", [url = *state.url] { copy(url); });
    }
    add("Remove", acts.remove);
    entries.emplace_back();
    add("Add Widgets…", acts.addWidgets);
    add("Colors", nullptr, modes(state, acts));
    entries.push_back({.label = localized("Lock"),
                       .act = [change = acts.change, locked = !state.isLocked] { change(Locking{.locked = locked}); },
                       .isOn = state.isLocked,
                       .submenu = {}});
    return entries;
}

} // namespace host
