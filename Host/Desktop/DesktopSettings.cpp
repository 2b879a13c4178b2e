#include "Host/Desktop/DesktopSettings.h"

#include "Host/Desktop/Toolkit.h"
#include "Host/Layout/Measures.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

namespace host {
namespace {

constexpr const char* appearanceNamespace = "org.freedesktop.appearance";

constexpr double usualDpi = 96;
constexpr double dpiUnit = 1024;
constexpr double minTextScale = 0.5;
constexpr double maxTextScale = 3;

/// Returns the theme's name, with its variant after a colon. The user's GTK_THEME replaces the desktop's theme.
std::string themeName(GtkSettings* settings) {
    if (const char* chosen = g_getenv("GTK_THEME"); chosen != nullptr) {
        return chosen;
    }
    char* name = nullptr;
    g_object_get(settings, "gtk-theme-name", &name, nullptr);
    return stringFromOwned(name);
}

bool isDark(std::string_view theme) {
    return theme.ends_with("-dark") || theme.ends_with(":dark") || theme.ends_with("-Dark") ||
           theme.ends_with("Inverse");
}

double textScaleOf(GtkSettings* settings) {
    int dpi = -1;
    g_object_get(settings, "gtk-xft-dpi", &dpi, nullptr);
    return dpi <= 0 ? 1 : std::clamp(dpi / dpiUnit / usualDpi, minTextScale, maxTextScale);
}

/// Returns the theme's colour of selections.
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

using VariantHandle = std::unique_ptr<GVariant, Releaser<g_variant_unref>>;

std::optional<Rgba> colorOf(GVariant* value) {
    if (g_variant_is_of_type(value, G_VARIANT_TYPE("(ddd)")) == FALSE) {
        return std::nullopt;
    }
    Rgba color;
    g_variant_get(value, "(ddd)", &color.red, &color.green, &color.blue);
    const auto isComponent = [](double component) { return component >= 0 && component <= 1; };
    // Other values mean no choice.
    const bool isColor = isComponent(color.red) && isComponent(color.green) && isComponent(color.blue);
    return isColor ? std::optional(color) : std::nullopt;
}

} // namespace

DesktopSettings::DesktopSettings(std::function<void()> changed)
    : changed_(std::move(changed)), toolkit_(gtk_settings_get_default()),
      isThemeRead_(g_getenv("GTK_THEME") != nullptr), cancellable_(g_cancellable_new()) {
    gboolean prefersDark = FALSE;
    g_object_get(toolkit_, "gtk-application-prefer-dark-theme", &prefersDark, nullptr);
    themePrefersDark_ = prefersDark != FALSE;
    isToolkitDark_ = themePrefersDark_;
    look_ = currentLook();
    connect<&DesktopSettings::refresh>(toolkit_, "notify::gtk-theme-name", this);
    connect<&DesktopSettings::refresh>(toolkit_, "notify::gtk-xft-dpi", this);
    g_dbus_proxy_new_for_bus(G_BUS_TYPE_SESSION, G_DBUS_PROXY_FLAGS_DO_NOT_LOAD_PROPERTIES, nullptr,
                             "org.freedesktop.portal.Desktop", "/org/freedesktop/portal/desktop",
                             "org.freedesktop.portal.Settings", cancellable_.get(), &DesktopSettings::onProxy, this);
}

DesktopSettings::~DesktopSettings() {
    g_cancellable_cancel(cancellable_.get());
    if (proxy_) {
        g_signal_handlers_disconnect_by_data(proxy_.get(), this);
    }
    g_signal_handlers_disconnect_by_data(toolkit_, this);
}

void DesktopSettings::onProxy(GObject* /*source*/, GAsyncResult* result, gpointer self) {
    ObjectHandle<GDBusProxy> proxy(g_dbus_proxy_new_for_bus_finish(result, nullptr));
    if (!proxy) {
        // There is no bus, or this is destroyed.
        return;
    }
    auto& settings = *static_cast<DesktopSettings*>(self);
    settings.proxy_ = std::move(proxy);
    connect<&DesktopSettings::onSignal>(settings.proxy_.get(), "g-signal", &settings);
    const std::array<const char*, 2> namespaces{appearanceNamespace, nullptr};
    g_dbus_proxy_call(settings.proxy_.get(), "ReadAll", g_variant_new("(^as)", namespaces.data()),
                      G_DBUS_CALL_FLAGS_NONE, -1, settings.cancellable_.get(), &DesktopSettings::onAnswer, self);
}

void DesktopSettings::onAnswer(GObject* source, GAsyncResult* result, gpointer self) {
    const VariantHandle answer(g_dbus_proxy_call_finish(G_DBUS_PROXY(source), result, nullptr));
    if (!answer || g_variant_is_of_type(answer.get(), G_VARIANT_TYPE("(a{sa{sv}})")) == FALSE) {
        return;
    }
    auto& settings = *static_cast<DesktopSettings*>(self);
    const VariantHandle all(g_variant_get_child_value(answer.get(), 0));
    if (const VariantHandle values(g_variant_lookup_value(all.get(), appearanceNamespace, G_VARIANT_TYPE_VARDICT));
        values) {
        GVariantIter iterator;
        g_variant_iter_init(&iterator, values.get());
        const char* key = nullptr;
        GVariant* value = nullptr;
        while (g_variant_iter_loop(&iterator, "{&sv}", &key, &value) != FALSE) {
            settings.take(key, value);
        }
    }
    settings.refresh();
}

void DesktopSettings::onSignal(const char* /*sender*/, const char* signal, GVariant* parameters) {
    if (std::string_view(signal) != "SettingChanged" ||
        g_variant_is_of_type(parameters, G_VARIANT_TYPE("(ssv)")) == FALSE) {
        return;
    }
    const char* group = nullptr;
    const char* key = nullptr;
    GVariant* value = nullptr;
    g_variant_get(parameters, "(&s&sv)", &group, &key, &value);
    const VariantHandle owned(value);
    if (std::string_view(group) == appearanceNamespace) {
        take(key, value);
        refresh();
    }
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

void DesktopSettings::readTheme() {
    readCursorTheme();
    if (std::exchange(isThemeRead_, true)) {
        return;
    }
    if (!setToolkitScheme()) {
        g_object_notify(G_OBJECT(toolkit_), "gtk-theme-name");
    }
    refresh();
}

/// Sets GTK's dark preference; true if it changed. GTK reads its theme on every set, so sets it only on change.
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

TileStyle DesktopSettings::tileStyle(double scale, Redaction redaction, DrawingMode mode) const {
    return {.appearance = {.scheme = look_.scheme,
                           .mode = mode,
                           .redaction = redaction,
                           .contrast = look_.contrast,
                           .accent = look_.accent},
            .scale = scale * look_.textScale,
            .direction = look_.direction};
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
