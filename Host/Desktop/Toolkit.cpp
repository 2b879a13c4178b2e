#include "Host/Desktop/Toolkit.h"

#include "Host/Desktop/Objects.h"
#include "Platform/Foundation/Localization.h"

#include <clocale>
#include <cstdlib>

namespace host {
namespace {

/// The parts of a tile are in its picture; their widgets take no room and draw nothing.
constexpr const char* partStyle = "button.tile-part { all: unset; }";

/// Without OpenGL, which on X the toolkit would load at once, with more memory than all the rest. For this process
/// alone, not for the applications that it starts.
bool initialize() {
    constexpr const char* variable = "GDK_GL";
    const bool isChosen = getenv(variable) != nullptr; // NOLINT(concurrency-mt-unsafe): before all threads
    setenv(variable, "disable", 0);                    // NOLINT(concurrency-mt-unsafe)
    const bool isInitialized = gtk_init_check(nullptr, nullptr) != FALSE;
    if (!isChosen) {
        unsetenv(variable); // NOLINT(concurrency-mt-unsafe)
    }
    return isInitialized;
}

} // namespace

std::optional<std::string> startToolkit() {
    // The toolkit's own way ends with "C" where the user's locale is not made on this machine, translated or not.
    gtk_disable_setlocale();
    setlocale(LC_ALL, ""); // NOLINT(concurrency-mt-unsafe): before all threads
    platform::startLocalization("widgethost");
    g_set_prgname("widgethost");
    if (!initialize()) {
        return "there is no display to show widgets on";
    }
    const ObjectHandle<GtkCssProvider> provider(gtk_css_provider_new());
    gtk_css_provider_load_from_data(provider.get(), partStyle, -1, nullptr);
    gtk_style_context_add_provider_for_screen(gdk_screen_get_default(), GTK_STYLE_PROVIDER(provider.get()),
                                              GTK_STYLE_PROVIDER_PRIORITY_APPLICATION);
    return std::nullopt;
}

void showFailure(const std::string& message) {
    GtkWidget* dialog = gtk_message_dialog_new(nullptr, GtkDialogFlags{}, GTK_MESSAGE_WARNING, GTK_BUTTONS_CLOSE, "%s",
                                               message.c_str());
    g_signal_connect(dialog, "response", G_CALLBACK(&gtk_widget_destroy), nullptr);
    gtk_widget_show(dialog);
}

} // namespace host
