#include "Host/Desktop/Toolkit.h"

#include "Host/Desktop/LayerShell.h"
#include "Host/Desktop/Objects.h"
#include "Host/Drawing/UserDirection.h"
#include "Platform/Foundation/Localization.h"

#include <clocale>
#include <cstdlib>

/// Made from tiles.gresource.xml.
extern "C" void tiles_register_resource();

namespace host {
namespace {

/// A variable that the toolkit is to see, but not the applications that this process starts; a user's own value stands.
class Variable {
  public:
    // NOLINTBEGIN(concurrency-mt-unsafe): before all threads
    Variable(const char* name, const char* value) : name_(getenv(name) == nullptr ? name : nullptr) {
        setenv(name, value, 0);
    }
    ~Variable() {
        if (name_ != nullptr) {
            unsetenv(name_);
        }
    }
    // NOLINTEND(concurrency-mt-unsafe)
    Variable(const Variable&) = delete;
    Variable& operator=(const Variable&) = delete;

  private:
    const char* name_;
};

/// Where the compositor has no layer shell, only an X server can keep windows under others. A user's own choice holds.
void chooseDisplay() {
    // NOLINTNEXTLINE(concurrency-mt-unsafe): before all threads
    if (getenv("GDK_BACKEND") == nullptr) {
        const auto version = layerShellVersion();
        gdk_set_allowed_backends(version && *version > 0 ? "wayland,x11" : "x11,wayland");
    }
}

/// The toolkit tells of one thing in this way: that the display is gone, after which it ends the process with 1.
GLogWriterOutput writeLog(GLogLevelFlags level, const GLogField* fields, gsize count, gpointer data) {
    if ((level & G_LOG_LEVEL_MESSAGE) != 0) {
        g_printerr("widgethost: the display is gone\n");
        return G_LOG_WRITER_HANDLED;
    }
    return g_log_writer_default(level, fields, count, data);
}

bool initialize() {
    // OpenGL the toolkit would load at once on X, with more memory than all the rest.
    const Variable graphics("GDK_GL", "disable");
    // Its own theme takes longer to read than the tiles to draw, which need none of it.
    const Variable theme("GTK_THEME", "WidgethostTiles");
    return gtk_init_check(nullptr, nullptr) != FALSE;
}

} // namespace

std::optional<std::string> startToolkit() {
    // The toolkit's own way complains where the user's locale is not generated on this machine.
    gtk_disable_setlocale();
    setlocale(LC_ALL, ""); // NOLINT(concurrency-mt-unsafe): before all threads
    platform::startLocalization("widgethost");
    // What desktops know windows by: the name of the desktop entry, which has the icon.
    constexpr const char* identifier = "net.foliovault.WidgetHost";
    g_set_prgname(identifier);
    gtk_window_set_default_icon_name(identifier);
    g_log_set_writer_func(&writeLog, nullptr, nullptr);
    chooseDisplay();
    tiles_register_resource();
    if (!initialize()) {
        return "there is no display to show widgets on";
    }
    // The toolkit's start gives the name a capital letter.
    gdk_set_program_class(identifier);
    // The toolkit would go by its own translations, which need a generated locale.
    gtk_widget_set_default_direction(userDirection() == Direction::rightToLeft ? GTK_TEXT_DIR_RTL : GTK_TEXT_DIR_LTR);
    const ObjectHandle<GtkCssProvider> provider(gtk_css_provider_new());
    gtk_css_provider_load_from_resource(provider.get(), "/org/gtk/libgtk/theme/WidgethostTiles/gtk.css");
    gtk_style_context_add_provider_for_screen(gdk_screen_get_default(), GTK_STYLE_PROVIDER(provider.get()),
                                              GTK_STYLE_PROVIDER_PRIORITY_APPLICATION);
    return std::nullopt;
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
