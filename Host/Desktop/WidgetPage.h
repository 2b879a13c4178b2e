// The gallery's page of one widget: a preview of each family in its real size, or smaller on a narrow page, with the
// widget's current content. The previews are packed into the page's width.
//
// A click on a preview adds the widget; a drag puts it where it is dropped. Called on the main thread.
#pragma once

#include "Host/Desktop/DropTargets.h"
#include "Host/Desktop/TilePreview.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace host {

class WidgetPage {
  public:
    using Add = std::function<void(const Instance& instance)>;

    /// Requires that `host`, `renderers`, `settings` and `drop` outlive this, and this its widget's signals.
    WidgetPage(HostApplication& host, RendererCache& renderers, const DesktopSettings& settings, DropTargets& drop,
               const std::string& extension, const WidgetInfo& widget, Add add);
    WidgetPage(const WidgetPage&) = delete;
    WidgetPage& operator=(const WidgetPage&) = delete;
    ~WidgetPage();

    /// Returns the page, which scrolls.
    GtkWidget* widget() { return scroller_.get(); }
    void restyle();

    /// Returns the size that shows all families whole, with `columns` small tiles side by side.
    static Size sizeFor(const std::vector<std::string>& families, int columns, const DesktopSettings& settings);

  private:
    struct Preview;

    void addPreview(const Instance& instance, const WidgetInfo& widget);
    void allocated(GdkRectangle* place);
    void pack();

    HostApplication& host_;
    RendererCache& renderers_;
    const DesktopSettings& settings_;
    DropTargets& drop_;
    Add add_;
    ObjectHandle<GtkWidget> scroller_;
    GtkWidget* texts_;
    GtkWidget* area_;
    std::vector<std::unique_ptr<Preview>> previews_;
    int width_ = 0;
    ScheduledCall packing_;
};

} // namespace host
