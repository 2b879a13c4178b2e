#include "Host/Desktop/DesktopSettings.h"

#include "Host/Layout/Measures.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

namespace host {
namespace {

constexpr const char* portalName = "org.freedesktop.portal.Desktop";
constexpr const char* portalPath = "/org/freedesktop/portal/desktop";
constexpr const char* portalInterface = "org.freedesktop.portal.Settings";
constexpr const char* appearanceNamespace = "org.freedesktop.appearance";

constexpr double usualDpi = 96;
constexpr double dpiUnit = 1024;
/// A tile that is larger or smaller than this is of no use to anybody.
constexpr double smallestTextScale = 0.5;
constexpr double greatestTextScale = 3;

/// What the user sets in place of the desktop's theme; empty for nothing.
std::string userTheme() {
    // NOLINTNEXTLINE(concurrency-mt-unsafe): nothing here sets variables
    const char* chosen = std::getenv("GTK_THEME");
    return chosen == nullptr ? "" : chosen;
}

/// The name of the theme, and of its variant after a colon, as GTK_THEME has it.
std::string themeName(GtkSettings* settings) {
    if (std::string chosen = userTheme(); !chosen.empty()) {
        return chosen;
    }
    char* name = nullptr;
    g_object_get(settings, "gtk-theme-name", &name, nullptr);
    return takeText(name);
}

bool isDark(std::string_view theme) {
    return theme.ends_with("-dark") || theme.ends_with(":dark") || theme.ends_with("-Dark") ||
           theme.ends_with("Inverse");
}

double textScaleOf(GtkSettings* settings) {
    int dpi = -1;
    g_object_get(settings, "gtk-xft-dpi", &dpi, nullptr);
    return dpi <= 0 ? 1 : std::clamp(dpi / dpiUnit / usualDpi, smallestTextScale, greatestTextScale);
}

/// The colour in which the theme shows what is selected.
Rgba themeAccent() {
    const std::unique_ptr<GtkWidgetPath, decltype(&gtk_widget_path_unref)> path(gtk_widget_path_new(),
                                                                                &gtk_widget_path_unref);
    gtk_widget_path_append_type(path.get(), GTK_TYPE_WINDOW);
    const ObjectHandle<GtkStyleContext> style(gtk_style_context_new());
    gtk_style_context_set_path(style.get(), path.get());
    GdkRGBA color{0, 0.478, 1, 1};
    gtk_style_context_lookup_color(style.get(), "theme_selected_bg_color", &color);
    return {color.red, color.green, color.blue, 1};
}

std::optional<Rgba> colorOf(GVariant* value) {
    if (g_variant_is_of_type(value, G_VARIANT_TYPE("(ddd)")) == FALSE) {
        return std::nullopt;
    }
    Rgba color;
    g_variant_get(value, "(ddd)", &color.red, &color.green, &color.blue);
    const auto isComponent = [](double component) { return component >= 0 && component <= 1; };
    // Anything else stands for no choice.
    const bool isColor = isComponent(color.red) && isComponent(color.green) && isComponent(color.blue);
    return isColor ? std::optional(color) : std::nullopt;
}

} // namespace

DesktopSettings::DesktopSettings(std::function<void()> changed)
    : changed_(std::move(changed)), toolkit_(gtk_settings_get_default()), isThemeRead_(!userTheme().empty()),
      cancelling_(g_cancellable_new()) {
    gboolean prefersDark = FALSE;
    g_object_get(toolkit_, "gtk-application-prefer-dark-theme", &prefersDark, nullptr);
    themePrefersDark_ = prefersDark != FALSE;
    isToolkitDark_ = themePrefersDark_;
    look_ = currentLook();
    connect<&DesktopSettings::themeChanged>(toolkit_, "notify::gtk-theme-name", this);
    connect<&DesktopSettings::themeChanged>(toolkit_, "notify::gtk-xft-dpi", this);
    g_bus_get(G_BUS_TYPE_SESSION, cancelling_.get(), &DesktopSettings::connected, this);
}

DesktopSettings::~DesktopSettings() {
    g_cancellable_cancel(cancelling_.get());
    if (subscription_ != 0) {
        g_dbus_connection_signal_unsubscribe(bus_.get(), subscription_);
    }
    g_signal_handlers_disconnect_by_data(toolkit_, this);
}

void DesktopSettings::connected(GObject* /*source*/, GAsyncResult* result, gpointer self) {
    GError* error = nullptr;
    ObjectHandle<GDBusConnection> bus(g_bus_get_finish(result, &error));
    if (!bus) {
        // Cancelled means that nobody is there any more.
        g_error_free(error);
        return;
    }
    auto& settings = *static_cast<DesktopSettings*>(self);
    settings.bus_ = std::move(bus);
    settings.subscription_ = g_dbus_connection_signal_subscribe(
        settings.bus_.get(), portalName, portalInterface, "SettingChanged", portalPath, appearanceNamespace,
        G_DBUS_SIGNAL_FLAGS_NONE, &DesktopSettings::portalChanged, self, nullptr);
    const std::array<const char*, 2> namespaces{appearanceNamespace, nullptr};
    g_dbus_connection_call(settings.bus_.get(), portalName, portalPath, portalInterface, "ReadAll",
                           g_variant_new("(^as)", namespaces.data()), G_VARIANT_TYPE("(a{sa{sv}})"),
                           G_DBUS_CALL_FLAGS_NONE, -1, settings.cancelling_.get(), &DesktopSettings::answered, self);
}

void DesktopSettings::answered(GObject* source, GAsyncResult* result, gpointer self) {
    GError* error = nullptr;
    GVariant* answer = g_dbus_connection_call_finish(G_DBUS_CONNECTION(source), result, &error);
    if (answer == nullptr) {
        g_error_free(error);
        return;
    }
    auto& settings = *static_cast<DesktopSettings*>(self);
    GVariant* all = g_variant_get_child_value(answer, 0);
    GVariant* ours = g_variant_lookup_value(all, appearanceNamespace, G_VARIANT_TYPE("a{sv}"));
    if (ours != nullptr) {
        GVariantIter values;
        g_variant_iter_init(&values, ours);
        const char* key = nullptr;
        GVariant* value = nullptr;
        while (g_variant_iter_loop(&values, "{&sv}", &key, &value) != FALSE) {
            settings.take(key, value);
        }
        g_variant_unref(ours);
    }
    g_variant_unref(all);
    g_variant_unref(answer);
    settings.refresh();
}

void DesktopSettings::portalChanged(GDBusConnection* /*bus*/, const char* /*sender*/, const char* /*path*/,
                                    const char* /*interface*/, const char* /*signal*/, GVariant* parameters,
                                    gpointer self) {
    if (g_variant_is_of_type(parameters, G_VARIANT_TYPE("(ssv)")) == FALSE) {
        return;
    }
    const char* group = nullptr;
    const char* key = nullptr;
    GVariant* value = nullptr;
    g_variant_get(parameters, "(&s&sv)", &group, &key, &value);
    auto& settings = *static_cast<DesktopSettings*>(self);
    if (std::string_view(group) == appearanceNamespace) {
        settings.take(key, value);
        settings.refresh();
    }
    g_variant_unref(value);
}

void DesktopSettings::take(const char* key, GVariant* value) {
    const std::string_view name = key;
    const bool isNumber = g_variant_is_of_type(value, G_VARIANT_TYPE_UINT32) != FALSE;
    const guint32 number = isNumber ? g_variant_get_uint32(value) : 0;
    if (name == "color-scheme") {
        // 0 stands for no preference.
        portal_.scheme = number == 1   ? std::optional(ColorScheme::dark)
                         : number == 2 ? std::optional(ColorScheme::light)
                                       : std::nullopt;
    } else if (name == "contrast") {
        portal_.contrast = number == 1 ? std::optional(Contrast::high) : std::nullopt;
    } else if (name == "accent-color") {
        portal_.accent = colorOf(value);
    }
}

void DesktopSettings::themeChanged(GParamSpec* /*property*/) {
    refresh();
}

void DesktopSettings::readTheme() {
    if (std::exchange(isThemeRead_, true)) {
        return;
    }
    if (!setToolkitScheme()) {
        g_object_notify(G_OBJECT(toolkit_), "gtk-theme-name");
    }
    refresh();
}

/// Whether that is news, with which the toolkit has read its theme; told what it knows, it would, too.
bool DesktopSettings::setToolkitScheme() {
    const bool isToBeDark = portal_.scheme ? *portal_.scheme == ColorScheme::dark : themePrefersDark_;
    if (std::exchange(isToolkitDark_, isToBeDark) == isToBeDark) {
        return false;
    }
    g_object_set(toolkit_, "gtk-application-prefer-dark-theme", static_cast<gboolean>(isToBeDark), nullptr);
    return true;
}

void DesktopSettings::refresh() {
    if (isThemeRead_) {
        setToolkitScheme();
    }
    const DesktopLook look = currentLook();
    if (std::exchange(look_, look) != look) {
        changed_();
    }
}

Size DesktopSettings::tileSize(const std::string& family) const {
    const Size points = familySize(family);
    return {points.width * look_.textScale, points.height * look_.textScale};
}

DesktopLook DesktopSettings::currentLook() const {
    const std::string theme = themeName(toolkit_);
    const ColorScheme themeScheme = themePrefersDark_ || isDark(theme) ? ColorScheme::dark : ColorScheme::light;
    const Contrast themeContrast = theme.starts_with("HighContrast") ? Contrast::high : Contrast::normal;
    const bool isMirrored = gtk_widget_get_default_direction() == GTK_TEXT_DIR_RTL;
    return {.scheme = portal_.scheme.value_or(themeScheme),
            .contrast = portal_.contrast.value_or(themeContrast),
            .accent = portal_.accent ? *portal_.accent : themeAccent(),
            .textScale = textScaleOf(toolkit_),
            .direction = isMirrored ? Direction::rightToLeft : Direction::leftToRight};
}

} // namespace host
