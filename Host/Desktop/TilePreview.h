// A tile's picture inside a window of the toolkit.
#pragma once

#include "Host/Connection/Messages.h"
#include "Host/Desktop/DesktopSettings.h"
#include "Host/Desktop/RendererCache.h"
#include "Host/Drawing/RenderedTile.h"

#include <optional>
#include <string>

namespace host {

class TilePreview {
  public:
    /// Shows a placeholder at first. `renderers` and `settings` must outlive this.
    TilePreview(std::string family, std::string name, RendererCache& renderers, const DesktopSettings& settings);
    TilePreview(const TilePreview&) = delete;
    TilePreview& operator=(const TilePreview&) = delete;
    ~TilePreview();

    GtkWidget* widget() const { return area_.get(); }
    const RenderedTile& rendered() const { return rendered_; }
    /// Of the tile, without its shadow, in the window's units.
    Size size() const;

    void show(const Entry& entry);
    /// The look of the desktop is another.
    void restyle();

  private:
    gboolean draw(cairo_t* cairo);
    void scaleNoticed(GParamSpec* property);

    std::string family_;
    RendererCache& renderers_;
    const DesktopSettings& settings_;
    ObjectHandle<GtkWidget> area_;
    std::optional<Entry> entry_;
    RenderedTile rendered_;
};

} // namespace host
