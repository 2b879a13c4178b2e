// Dragging a widget from the gallery to its place on the desktop.
//
// During the drag, a transparent window on every screen accepts the drop.
#pragma once

#include "Host/Arrangement/Arrangement.h"
#include "Host/Desktop/DesktopWindow.h"
#include "Host/Desktop/Outputs.h"
#include "Host/Desktop/TilePreview.h"

#include <functional>
#include <memory>
#include <vector>

namespace host {

class DropTargets {
  public:
    using Dropped = std::function<void(const Instance& instance)>;

    /// Calls `dropped` with the instance and its place.
    DropTargets(Outputs& outputs, Dropped dropped) : outputs_(outputs), dropped_(std::move(dropped)) {}
    DropTargets(const DropTargets&) = delete;
    DropTargets& operator=(const DropTargets&) = delete;

    /// Makes `widget` a drag source for `instance`, with the picture of `view`. Requires that both outlive the widget.
    void addSource(GtkWidget* widget, const Instance& instance, const TilePreview& view);

  private:
    struct Source {
        void begun(GdkDragContext* context) const { targets.begin(*this, context); }
        void ended() const { targets.end(); }

        DropTargets& targets;
        const Instance& instance;
        const TilePreview& view;
    };
    struct Target {
        Target(DropTargets& all, Output on);
        gboolean dropped(GdkDragContext* context, int x, int y, guint time);

        DropTargets& targets;
        Output output;
        DesktopWindow window;
    };

    void begin(const Source& source, GdkDragContext* context);
    void end();
    void hide();

    Outputs& outputs_;
    Dropped dropped_;
    std::vector<std::unique_ptr<Source>> sources_;
    std::vector<std::unique_ptr<Target>> targets_;
    const Source* dragged_ = nullptr;
    ScheduledCall hiding_;
};

} // namespace host
