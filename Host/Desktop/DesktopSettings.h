// The desktop's settings that tiles follow: colour scheme, contrast, accent colour, size of text, direction.
//
// They come from the settings portal (org.freedesktop.portal.Settings, namespace org.freedesktop.appearance), else from
// GTK's theme, and are followed while running. The dark scheme applies to GTK's windows, too.
#pragma once

#include "Host/Desktop/Objects.h"
#include "Host/Drawing/RenderedTile.h"
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
    /// Scales the whole tile, so that no text is cut.
    double textScale = 1;
    Direction direction = Direction::leftToRight;
    bool operator==(const DesktopLook&) const = default;
};

class DesktopSettings {
  public:
    /// Calls `changed` from the main loop when the look changes. Uses the theme until the portal has answered.
    explicit DesktopSettings(std::function<void()> changed);
    DesktopSettings(const DesktopSettings&) = delete;
    DesktopSettings& operator=(const DesktopSettings&) = delete;
    ~DesktopSettings();

    const DesktopLook& look() const { return look_; }
    /// Returns the size of a tile in the desktop's units.
    Size tileSize(const std::string& family) const;
    /// Returns how a tile is drawn at `scale` pixels per desktop unit.
    TileStyle tileStyle(double scale, Redaction redaction, DrawingMode mode = DrawingMode::fullColor) const;

    /// Makes GTK read the theme, for windows other than tiles. The accent colour may be known only then. Called no
    /// earlier than needed, since it takes longer than all tiles and stays in memory.
    void readTheme();

  private:
    struct Portal {
        std::optional<ColorScheme> scheme;
        std::optional<Contrast> contrast;
        std::optional<Rgba> accent;
    };

    static void onProxy(GObject* source, GAsyncResult* result, gpointer self);
    static void onAnswer(GObject* source, GAsyncResult* result, gpointer self);
    void onSignal(const char* sender, const char* signal, GVariant* parameters);
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
    ObjectHandle<GCancellable> cancellable_;
    ObjectHandle<GDBusProxy> proxy_;
};

} // namespace host
