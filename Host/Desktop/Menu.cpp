#include "Host/Desktop/Menu.h"

namespace host {
namespace {

using Act = std::function<void()>;

void activated(GtkMenuItem* /*item*/, gpointer act) {
    // What it does may be the end of the menu's widget, and of this function object.
    const Act copy = *static_cast<Act*>(act);
    copy();
}

void forget(gpointer act, GClosure* /*closure*/) {
    delete static_cast<Act*>(act);
}

GtkWidget* makeMenu(const std::vector<MenuEntry>& entries);

GtkWidget* makeItem(const MenuEntry& entry) {
    if (entry.label.empty()) {
        return gtk_separator_menu_item_new();
    }
    GtkWidget* item = nullptr;
    if (entry.isOn) {
        item = gtk_check_menu_item_new_with_label(entry.label.c_str());
        gtk_check_menu_item_set_draw_as_radio(GTK_CHECK_MENU_ITEM(item), static_cast<gboolean>(entry.isRadio));
        gtk_check_menu_item_set_active(GTK_CHECK_MENU_ITEM(item), static_cast<gboolean>(*entry.isOn));
    } else {
        item = gtk_menu_item_new_with_label(entry.label.c_str());
    }
    if (!entry.submenu.empty()) {
        gtk_menu_item_set_submenu(GTK_MENU_ITEM(item), makeMenu(entry.submenu));
    } else if (entry.act) {
        g_signal_connect_data(item, "activate", G_CALLBACK(&activated), new Act(entry.act), &forget, GConnectFlags{});
    } else {
        gtk_widget_set_sensitive(item, FALSE);
    }
    return item;
}

GtkWidget* makeMenu(const std::vector<MenuEntry>& entries) {
    GtkWidget* menu = gtk_menu_new();
    for (const MenuEntry& entry : entries) {
        GtkWidget* item = makeItem(entry);
        gtk_menu_shell_append(GTK_MENU_SHELL(menu), item);
        gtk_widget_show(item);
    }
    return menu;
}

/// Later, because an entry's signal comes after this one.
void closed(GtkWidget* menu, gpointer /*unused*/) {
    g_idle_add(
        [](gpointer each) {
            gtk_widget_destroy(GTK_WIDGET(each));
            g_object_unref(each);
            return G_SOURCE_REMOVE;
        },
        g_object_ref(menu));
}

} // namespace

void popUpMenu(GtkWidget* widget, const GdkEvent* event, const std::vector<MenuEntry>& entries) {
    GtkWidget* menu = makeMenu(entries);
    gtk_menu_attach_to_widget(GTK_MENU(menu), widget, nullptr);
    g_signal_connect(menu, "selection-done", G_CALLBACK(&closed), nullptr);
    if (gdk_event_get_event_type(event) == GDK_BUTTON_PRESS) {
        gtk_menu_popup_at_pointer(GTK_MENU(menu), event);
        return;
    }
    // By a key, at what has the keyboard, and with the first entry chosen.
    GtkWidget* focused = gtk_window_get_focus(GTK_WINDOW(widget));
    gtk_menu_popup_at_widget(GTK_MENU(menu), focused != nullptr ? focused : widget,
                             focused != nullptr ? GDK_GRAVITY_SOUTH_WEST : GDK_GRAVITY_CENTER, GDK_GRAVITY_NORTH_WEST,
                             event);
    gtk_menu_shell_select_first(GTK_MENU_SHELL(menu), FALSE);
}

} // namespace host
