// The gallery: every widget there is, in each size with what it shows now, to be added by a button or dragged to its
// place.
#pragma once

#include "Host/Desktop/Catalog.h"
#include "Host/Desktop/DesktopSettings.h"
#include "Host/Desktop/DropTargets.h"
#include "Host/Desktop/RendererCache.h"
#include "Host/Desktop/TilePreview.h"

#include <functional>
#include <memory>
#include <vector>

namespace host {

class GalleryWindow {
  public:
    using Add = std::function<void(const Instance& instance)>;

    /// `add` places a widget, `closed` is called when the user closes the window, and may end this. Everything else
    /// must outlive this.
    GalleryWindow(HostApplication& host, Catalog& catalog, RendererCache& renderers, const DesktopSettings& settings,
                  Outputs& outputs, Add add, std::function<void()> closed);
    GalleryWindow(const GalleryWindow&) = delete;
    GalleryWindow& operator=(const GalleryWindow&) = delete;
    ~GalleryWindow();

    /// Brings it before the user.
    void present();
    void restyle();
    /// Says something above the widgets; with `showExamples`, offers that too.
    void say(const std::string& notice, std::function<void()> showExamples);

  private:
    /// A widget in one of its sizes.
    struct Card;

    void ask(const std::string& extension);
    void addWidget(const std::string& extension, const WidgetInfo& widget);
    GtkWidget* makeCard(const Instance& instance, const WidgetInfo& widget);
    void responded(int response);
    void sayNothing(const std::string& text, const std::string& reason);
    gboolean deleted(GdkEvent* event);

    HostApplication& host_;
    Catalog& catalog_;
    RendererCache& renderers_;
    const DesktopSettings& settings_;
    DropTargets drop_;
    Add add_;
    std::function<void()> closed_;
    std::vector<std::unique_ptr<Card>> cards_;
    WindowHandle window_;
    GtkWidget* box_;
    GtkWidget* stack_;
    std::function<void()> showExamples_;
    Lifetime lifetime_;
};

} // namespace host
