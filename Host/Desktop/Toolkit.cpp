#include "Host/Desktop/Toolkit.h"

#include "Host/Desktop/LayerShell.h"
#include "Host/Desktop/Objects.h"
#include "Host/Drawing/UserDirection.h"
#include "Platform/Foundation/Localization.h"

#include <clocale>
#include <fontconfig/fontconfig.h>
#include <gdk/gdkwayland.h>
#include <malloc.h>
#include <thread>
#include <utility>
#include <vector>

/// Made from tiles.gresource.xml.
extern "C" void tiles_register_resource();

namespace host {
namespace {

/// Prefers X11 if the compositor has no layer shell. Keeps the user's own choice. Returns whether Wayland was chosen.
bool chooseDisplay() {
    if (g_getenv("GDK_BACKEND") != nullptr) {
        return false;
    }
    const auto version = layerShellVersion();
    const bool prefersWayland = version && *version > 0;
    gdk_set_allowed_backends(prefersWayland ? "wayland,x11" : "x11,wayland");
    return prefersWayland;
}

/// Replaces GTK's only message of this level: that the display is gone. GTK then exits with 1.
GLogWriterOutput writeLog(GLogLevelFlags level, const GLogField* fields, gsize count, gpointer data) {
    if ((level & G_LOG_LEVEL_MESSAGE) != 0) {
        g_printerr("widgethost: the display is gone\n");
        return G_LOG_WRITER_HANDLED;
    }
    return g_log_writer_default(level, fields, count, data);
}

bool initialize(bool usesWayland) {
    std::vector<std::pair<const char*, const char*>> variables{
        // On X11 GTK would load OpenGL at once, which takes more memory than all the rest.
        {"GDK_GL", "disable"},
        // Reading the desktop's theme takes longer than drawing the tiles, which do not use it.
        {"GTK_THEME", "WidgethostTiles"},
    };
    if (usesWayland) {
        // GTK would read all cursors of the theme at once, which takes longer than drawing the tiles.
        variables.emplace_back("XCURSOR_PATH", "/dev/null");
    }
    // The user's own values stay.
    std::erase_if(variables, [](const auto& each) { return g_getenv(each.first) != nullptr; });
    for (const auto& [name, value] : variables) {
        g_setenv(name, value, FALSE);
    }
    // Takes as long as connecting to the display. Ends before the environment is changed again, since it reads that.
    std::thread fonts([] { FcInit(); });
    const bool isInitialized = gtk_init_check(nullptr, nullptr) != FALSE;
    fonts.join();
    if (GdkDisplay* display = gdk_display_get_default(); usesWayland && GDK_IS_WAYLAND_DISPLAY(display)) {
        // GTK would not read a theme again that has the same name.
        gdk_wayland_display_set_cursor_theme(display, "", 1);
    }
    for (const auto& [name, value] : variables) {
        // Applications that this process starts do not get them.
        g_unsetenv(name);
    }
    return isInitialized;
}

} // namespace

std::optional<std::string> startToolkit() {
    // GTK would complain about a locale that is not generated on this machine.
    gtk_disable_setlocale();
    setlocale(LC_ALL, ""); // NOLINT(concurrency-mt-unsafe): before all threads
    platform::startLocalization("widgethost");
    // Desktops find the icon of a window by the name of its desktop entry. Tiles need none: loading it takes longer than
    // drawing one.
    constexpr const char* identifier = "net.foliovault.WidgetHost";
    g_set_prgname(identifier);
    g_log_set_writer_func(&writeLog, nullptr, nullptr);
    const bool usesWayland = chooseDisplay();
    tiles_register_resource();
    if (!initialize(usesWayland)) {
        return "there is no display to show widgets on";
    }
    // GTK's start gives the name a capital letter.
    gdk_set_program_class(identifier);
    // GTK would use the direction of its own translation, which needs a generated locale.
    gtk_widget_set_default_direction(userDirection() == Direction::rightToLeft ? GTK_TEXT_DIR_RTL : GTK_TEXT_DIR_LTR);
    const ObjectHandle<GtkCssProvider> provider(gtk_css_provider_new());
    gtk_css_provider_load_from_resource(provider.get(), "/org/gtk/libgtk/theme/WidgethostTiles/gtk.css");
    gtk_style_context_add_provider_for_screen(gdk_screen_get_default(), GTK_STYLE_PROVIDER(provider.get()),
                                              GTK_STYLE_PROVIDER_PRIORITY_APPLICATION);
    return std::nullopt;
}

void readCursorTheme() {
    static bool isRead = false;
    GdkDisplay* display = gdk_display_get_default();
    if (std::exchange(isRead, true) || !GDK_IS_WAYLAND_DISPLAY(display)) {
        return;
    }
    char* name = nullptr;
    int size = 0;
    g_object_get(gtk_settings_get_default(), "gtk-cursor-theme-name", &name, "gtk-cursor-theme-size", &size, nullptr);
    const std::string theme = stringFromOwned(name);
    // Without settings GTK takes these.
    gdk_wayland_display_set_cursor_theme(display, theme.empty() ? "default" : theme.c_str(), size > 0 ? size : 32);
    // The images are in shared memory now.
    malloc_trim(0);
}

void showFailure(const std::string& message, const std::string& reason) {
    GtkWidget* dialog =
        gtk_message_dialog_new(nullptr, GtkDialogFlags{}, GTK_MESSAGE_WARNING, GTK_BUTTONS_NONE, "%s", message.c_str());
    gtk_dialog_add_button(GTK_DIALOG(dialog), platform::localized("Close").c_str(), GTK_RESPONSE_CLOSE);
    gtk_message_dialog_format_secondary_text(GTK_MESSAGE_DIALOG(dialog), "%s", reason.c_str());
    g_signal_connect(dialog, "response", G_CALLBACK(&gtk_widget_destroy), nullptr);
    gtk_widget_show(dialog);
}

} // namespace host
