// A tile's picture inside a GTK window, whose style draws the shadow (`tileClass`).
#pragma once

#include "Host/Connection/Messages.h"
#include "Host/Connection/Requests.h"
#include "Host/Desktop/DesktopSettings.h"
#include "Host/Desktop/RendererCache.h"
#include "Host/Drawing/RenderedTile.h"
#include "Host/Session/HostApplication.h"

#include <limits>
#include <optional>
#include <string>

namespace host {

class TilePreview {
  public:
    /// Shows a placeholder at first. Requires that `renderers` and `settings` outlive this.
    TilePreview(std::string family, std::string name, RendererCache& renderers, const DesktopSettings& settings);
    TilePreview(const TilePreview&) = delete;
    TilePreview& operator=(const TilePreview&) = delete;
    ~TilePreview();

    GtkWidget* widget() const { return area_.get(); }
    const RenderedTile& rendered() const { return rendered_; }
    /// Returns the tile's size without its shadow, in the window's units.
    Size size() const;
    /// Scales the tile down if it is wider than this.
    void limitWidth(double maxWidth);

    /// Requests the instance's entry and shows it in the instance's family. Ignores the responses to earlier requests.
    void load(HostApplication& host, const Instance& instance, EntryRequest::Method method);
    /// Draws the tile again, in the desktop's current look.
    void restyle();

  private:
    gboolean draw(cairo_t* cairo);

    std::string family_;
    double maxWidth_ = std::numeric_limits<double>::infinity();
    RendererCache& renderers_;
    const DesktopSettings& settings_;
    ObjectHandle<GtkWidget> area_;
    std::optional<Entry> entry_;
    RenderedTile rendered_;
    int requests_ = 0;
    Lifetime lifetime_;
};

} // namespace host
