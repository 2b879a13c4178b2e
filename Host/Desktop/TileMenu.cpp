#include "Host/Desktop/TileMenu.h"

#include "Platform/Foundation/Localization.h"

#include <array>
#include <utility>
#include <vector>

namespace host {
namespace {

using platform::localized;

using Call = std::function<void()>;

/// Adds an item that makes the call when it is activated.
void addItem(GtkWidget* menu, GtkWidget* item, Call call) {
    const auto activated = +[](GtkMenuItem* /*item*/, gpointer own) { (*static_cast<Call*>(own))(); };
    const auto forget = [](gpointer own, GClosure* /*closure*/) { delete static_cast<Call*>(own); };
    g_signal_connect_data(item, "activate", G_CALLBACK(activated), new Call(std::move(call)), forget, GConnectFlags{});
    gtk_menu_shell_append(GTK_MENU_SHELL(menu), item);
}

void addItem(GtkWidget* menu, const char* label, Call call) {
    addItem(menu, gtk_menu_item_new_with_label(localized(label).c_str()), std::move(call));
}

GtkWidget* makeCheckItem(const std::string& title, bool isOn) {
    GtkWidget* item = gtk_check_menu_item_new_with_label(title.c_str());
    gtk_check_menu_item_set_active(GTK_CHECK_MENU_ITEM(item), static_cast<gboolean>(isOn));
    return item;
}

/// Adds a submenu of values and their titles.
void addChoice(GtkWidget* menu, const char* label, const std::string& chosen,
               const std::vector<std::pair<std::string, std::string>>& values,
               const std::function<void(const std::string& value)>& choose) {
    GtkWidget* submenu = gtk_menu_new();
    for (const auto& [value, title] : values) {
        GtkWidget* item = makeCheckItem(title, value == chosen);
        gtk_check_menu_item_set_draw_as_radio(GTK_CHECK_MENU_ITEM(item), TRUE);
        atk_object_set_role(gtk_widget_get_accessible(item), ATK_ROLE_RADIO_MENU_ITEM);
        addItem(submenu, item, [menu, choose, value = value] {
            // GTK closes only the submenu if assistive technology activates the item.
            gtk_menu_shell_cancel(GTK_MENU_SHELL(menu));
            choose(value);
        });
    }
    GtkWidget* item = gtk_menu_item_new_with_label(localized(label).c_str());
    gtk_menu_item_set_submenu(GTK_MENU_ITEM(item), submenu);
    gtk_menu_shell_append(GTK_MENU_SHELL(menu), item);
}

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
    GtkWidget* menu = gtk_menu_new();
    if (state.widget != nullptr && !state.widget->parameters.empty()) {
        addItem(menu, "Edit…", actions.edit);
    }
    if (state.widget != nullptr && state.widget->families.size() > 1) {
        std::vector<std::pair<std::string, std::string>> sizes;
        for (const std::string& family : state.widget->families) {
            sizes.emplace_back(family, familyTitle(family));
        }
        addChoice(menu, "Size", state.instance.family, sizes,
                  [change = actions.change, id = state.instance.id](const std::string& family) {
                      change(Resizing{.id = id, .family = family});
                  });
    }
    addItem(menu, "Reload", actions.reload);
    if (state.url) {
        addItem(menu, "Copy Link", [url = *state.url] {
            gtk_clipboard_set_text(gtk_clipboard_get(GDK_SELECTION_CLIPBOARD), url.c_str(), -1);
        });
    }
    addItem(menu, "Remove", actions.remove);
    gtk_menu_shell_append(GTK_MENU_SHELL(menu), gtk_separator_menu_item_new());
    addItem(menu, "Add Widgets…", actions.addWidgets);
    addChoice(
        menu, "Colors", state.renderingMode,
        {{"fullColor", localized("Full Color")}, {"tinted", localized("Tinted")}, {"vibrant", localized("Vibrant")}},
        [change = actions.change](const std::string& mode) { change(SetRenderingMode{.renderingMode = mode}); });
    addItem(menu, makeCheckItem(localized("Lock"), state.isLocked),
            [change = actions.change, locked = !state.isLocked] { change(Locking{.locked = locked}); });
    gtk_widget_show_all(menu);

    gtk_menu_attach_to_widget(GTK_MENU(menu), widget, nullptr);
    g_signal_connect(menu, "selection-done", G_CALLBACK(&closed), nullptr);
    if (gdk_event_get_event_type(event) == GDK_BUTTON_PRESS) {
        gtk_menu_popup_at_pointer(GTK_MENU(menu), event);
        return;
    }
    GtkWidget* focused = gtk_window_get_focus(GTK_WINDOW(widget));
    gtk_menu_popup_at_widget(GTK_MENU(menu), focused != nullptr ? focused : widget,
                             focused != nullptr ? GDK_GRAVITY_SOUTH_WEST : GDK_GRAVITY_CENTER, GDK_GRAVITY_NORTH_WEST,
                             event);
    gtk_menu_shell_select_first(GTK_MENU_SHELL(menu), FALSE);
}

} // namespace host
