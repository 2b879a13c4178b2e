// What the user chose for the whole desktop that bears on how tiles look: colour scheme, contrast, accent colour, size
// of text, direction.
//
// From the settings portal (org.freedesktop.portal.Settings, namespace org.freedesktop.appearance) where there is one,
// else from the toolkit's theme; followed while running. The toolkit's own windows are told of a dark scheme too.
#pragma once

#include "Host/Desktop/Objects.h"
#include "Host/Drawing/Appearance.h"
#include "Host/Layout/Geometry.h"
#include "Host/Layout/Mirroring.h"

#include <functional>
#include <optional>
#include <string>

namespace host {

struct DesktopLook {
    ColorScheme scheme = ColorScheme::light;
    Contrast contrast = Contrast::normal;
    Rgba accent;
    /// How much larger than usual texts are to be; tiles grow as a whole, so that nothing is cut.
    double textScale = 1;
    Direction direction = Direction::leftToRight;
    bool operator==(const DesktopLook&) const = default;
};

class DesktopSettings {
  public:
    /// `changed` is called from the main loop when the look is another. What the portal says comes a moment later than
    /// this; until then the theme counts.
    explicit DesktopSettings(std::function<void()> changed);
    DesktopSettings(const DesktopSettings&) = delete;
    DesktopSettings& operator=(const DesktopSettings&) = delete;
    ~DesktopSettings();

    const DesktopLook& look() const { return look_; }
    /// Of a tile of the family, in the desktop's units.
    Size tileSize(const std::string& family) const;

    /// Has the toolkit read the theme for windows other than tiles. It may be that only then the accent colour is
    /// known.
    void readTheme();

  private:
    /// What the portal has said.
    struct Portal {
        std::optional<ColorScheme> scheme;
        std::optional<Contrast> contrast;
        std::optional<Rgba> accent;
    };

    static void connected(GObject* source, GAsyncResult* result, gpointer self);
    static void answered(GObject* source, GAsyncResult* result, gpointer self);
    static void portalChanged(GDBusConnection* bus, const char* sender, const char* path, const char* interface,
                              const char* signal, GVariant* parameters, gpointer self);
    void themeChanged(GParamSpec* property);
    void take(const char* key, GVariant* value);
    void refresh();
    bool setToolkitScheme();
    DesktopLook currentLook() const;

    std::function<void()> changed_;
    GtkSettings* toolkit_;
    bool isThemeRead_;
    bool themePrefersDark_;
    bool isToolkitDark_;
    Portal portal_;
    DesktopLook look_;
    ObjectHandle<GCancellable> cancelling_;
    ObjectHandle<GDBusConnection> bus_;
    guint subscription_ = 0;
};

} // namespace host
