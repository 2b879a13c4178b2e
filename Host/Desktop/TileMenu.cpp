#include "Host/Desktop/TileMenu.h"

#include "Platform/Foundation/Localization.h"

#include <array>
#include <utility>
#include <vector>

namespace host {
namespace {

using platform::localized;

/// `value` is the chosen one of several, else empty.
using Activate = std::function<void(const std::string& value)>;

/// A menu and its actions.
class Menu {
  public:
    /// With a boolean `state`, an item that is on or off.
    void add(const char* label, const char* name, Activate activate, GVariant* state = nullptr) {
        addAction(name, nullptr, state, std::move(activate));
        g_menu_append(section_.get(), localized(label).c_str(), detailed(name).c_str());
    }

    /// A submenu of values and their titles.
    void addChoice(const char* label, const char* name, const std::string& chosen,
                   const std::vector<std::pair<std::string, std::string>>& values, Activate activate) {
        addAction(name, G_VARIANT_TYPE_STRING, g_variant_new_string(chosen.c_str()), std::move(activate));
        const ObjectHandle<GMenu> submenu(g_menu_new());
        for (const auto& [value, title] : values) {
            const ObjectHandle<GMenuItem> item(g_menu_item_new(title.c_str(), nullptr));
            g_menu_item_set_action_and_target(item.get(), detailed(name).c_str(), "s", value.c_str());
            g_menu_append_item(submenu.get(), item.get());
        }
        g_menu_append_submenu(section_.get(), localized(label).c_str(), G_MENU_MODEL(submenu.get()));
    }

    /// Ends a group of items: a line, if others follow.
    void endSection() {
        g_menu_append_section(menu_.get(), nullptr, G_MENU_MODEL(section_.get()));
        section_.reset(g_menu_new());
    }

    /// The GtkMenu.
    GtkWidget* makeWidget() const {
        GtkWidget* widget = gtk_menu_new_from_model(G_MENU_MODEL(menu_.get()));
        gtk_widget_insert_action_group(widget, "tile", G_ACTION_GROUP(actions_.get()));
        return widget;
    }

  private:
    static std::string detailed(const char* name) { return std::string("tile.") + name; }

    static void activated(GSimpleAction* /*action*/, GVariant* parameter, gpointer activate) {
        const auto& call = *static_cast<Activate*>(activate);
        call(parameter != nullptr ? g_variant_get_string(parameter, nullptr) : "");
    }

    void addAction(const char* name, const GVariantType* parameter, GVariant* state, Activate activate) {
        const ObjectHandle<GSimpleAction> action(g_simple_action_new_stateful(name, parameter, state));
        const auto forget = [](gpointer each, GClosure* /*closure*/) { delete static_cast<Activate*>(each); };
        g_signal_connect_data(action.get(), "activate", G_CALLBACK(&Menu::activated), new Activate(std::move(activate)),
                              forget, GConnectFlags{});
        g_action_map_add_action(G_ACTION_MAP(actions_.get()), G_ACTION(action.get()));
    }

    ObjectHandle<GMenu> menu_{g_menu_new()};
    ObjectHandle<GMenu> section_{g_menu_new()};
    ObjectHandle<GSimpleActionGroup> actions_{g_simple_action_group_new()};
};

/// Destroys the menu later, because an item's signal comes after this one.
void closed(GtkWidget* menu, gpointer /*unused*/) {
    const auto destroy = [](gpointer each) {
        gtk_widget_destroy(GTK_WIDGET(each));
        return G_SOURCE_REMOVE;
    };
    g_idle_add_full(G_PRIORITY_DEFAULT_IDLE, destroy, g_object_ref(menu), &g_object_unref);
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

void popUpTileMenu(GtkWidget* widget, const GdkEvent* event, const TileMenuState& state,
                   const TileMenuActions& actions) {
    const auto plain = [](const std::function<void()>& act) { return [act](const std::string& /*value*/) { act(); }; };
    Menu menu;
    if (state.widget != nullptr && !state.widget->parameters.empty()) {
        menu.add("Edit…", "edit", plain(actions.edit));
    }
    if (state.widget != nullptr && state.widget->families.size() > 1) {
        std::vector<std::pair<std::string, std::string>> sizes;
        for (const std::string& family : state.widget->families) {
            sizes.emplace_back(family, familyTitle(family));
        }
        menu.addChoice("Size", "size", state.instance.family, sizes,
                       [change = actions.change, id = state.instance.id](const std::string& family) {
                           change(Resizing{.id = id, .family = family});
                       });
    }
    menu.add("Reload", "reload", plain(actions.reload));
    if (state.url) {
        menu.add("Copy Link", "copy", [url = *state.url](const std::string& /*value*/) {
            gtk_clipboard_set_text(gtk_clipboard_get(GDK_SELECTION_CLIPBOARD), url.c_str(), -1);
        });
    }
    menu.add("Remove", "remove", plain(actions.remove));
    menu.endSection();
    menu.add("Add Widgets…", "add", plain(actions.addWidgets));
    menu.addChoice(
        "Colors", "colors", state.renderingMode,
        {{"fullColor", localized("Full Color")}, {"tinted", localized("Tinted")}, {"vibrant", localized("Vibrant")}},
        [change = actions.change](const std::string& mode) { change(SetRenderingMode{.renderingMode = mode}); });
    menu.add(
        "Lock", "lock",
        [change = actions.change, locked = !state.isLocked](const std::string& /*value*/) {
            change(Locking{.locked = locked});
        },
        g_variant_new_boolean(static_cast<gboolean>(state.isLocked)));
    menu.endSection();

    GtkWidget* popup = menu.makeWidget();
    gtk_menu_attach_to_widget(GTK_MENU(popup), widget, nullptr);
    g_signal_connect(popup, "selection-done", G_CALLBACK(&closed), nullptr);
    if (gdk_event_get_event_type(event) == GDK_BUTTON_PRESS) {
        gtk_menu_popup_at_pointer(GTK_MENU(popup), event);
        return;
    }
    GtkWidget* focused = gtk_window_get_focus(GTK_WINDOW(widget));
    gtk_menu_popup_at_widget(GTK_MENU(popup), focused != nullptr ? focused : widget,
                             focused != nullptr ? GDK_GRAVITY_SOUTH_WEST : GDK_GRAVITY_CENTER, GDK_GRAVITY_NORTH_WEST,
                             event);
    gtk_menu_shell_select_first(GTK_MENU_SHELL(popup), FALSE);
}

} // namespace host
