// A tile's picture inside a window of the toolkit, which draws the shadow (`tileClass`).
#pragma once

#include "Host/Connection/Messages.h"
#include "Host/Connection/Requests.h"
#include "Host/Desktop/DesktopSettings.h"
#include "Host/Desktop/RendererCache.h"
#include "Host/Drawing/RenderedTile.h"
#include "Host/Session/HostApplication.h"

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

    /// Asks for the instance's entry and shows it in the instance's family. Of several requests the last one counts.
    void load(HostApplication& host, const Instance& instance, EntryRequest::Method method);
    /// Draws anew, as the desktop looks now.
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
    int requests_ = 0;
    Lifetime lifetime_;
};

} // namespace host
