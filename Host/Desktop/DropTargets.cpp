#include "Host/Desktop/DropTargets.h"

#include "Host/Arrangement/Snapping.h"
#include "Host/Desktop/TilePaint.h"

#include <array>
#include <cmath>

namespace host {
namespace {

/// No data is transferred, since source and target are in this process.
GtkTargetEntry* target() {
    static std::string name = "application/x-widgethost-widget";
    static GtkTargetEntry entry{name.data(), GTK_TARGET_SAME_APP, 0};
    return &entry;
}

} // namespace

DropTargets::Target::Target(DropTargets& all, Output on)
    : targets(all), output(std::move(on)),
      window(DesktopWindow::Level::desktop, DesktopWindow::Input::all, all.outputs_.stacking()) {
    gtk_drag_dest_set(window.widget(), GTK_DEST_DEFAULT_MOTION, target(), 1, GDK_ACTION_COPY);
    connect<&Target::dropped>(window.widget(), "drag-drop", this);
    window.put(output, output.screen.bounds);
}

void DropTargets::addSource(GtkWidget* widget, const Instance& instance, const TilePreview& view) {
    Source* source = sources_.emplace_back(new Source{*this, instance, view}).get();
    gtk_drag_source_set(widget, GDK_BUTTON1_MASK, target(), 1, GDK_ACTION_COPY);
    connect<&Source::begun>(widget, "drag-begin", source);
    connect<&Source::ended>(widget, "drag-end", source);
}

void DropTargets::begin(const Source& source, GdkDragContext* context) {
    dragged_ = &source;
    const RenderedTile& rendered = source.view.rendered();
    const int scale = gtk_widget_get_scale_factor(source.view.widget());
    const SurfaceHandle icon(
        cairo_image_surface_create(CAIRO_FORMAT_ARGB32, rendered.picture.width, rendered.picture.height));
    const CairoHandle cairo(cairo_create(icon.get()));
    paintTile(cairo.get(), rendered,
              {0, 0, static_cast<double>(rendered.picture.width), static_cast<double>(rendered.picture.height)},
              Backdrop::transparent);
    cairo_surface_set_device_scale(icon.get(), scale, scale);
    gtk_drag_set_icon_surface(context, icon.get());
    for (const Output& output : outputs_.all()) {
        targets_.push_back(std::make_unique<Target>(*this, output));
    }
}

void DropTargets::end() {
    dragged_ = nullptr;
    // Not during a target's own signal.
    hiding_.idle<&DropTargets::hide>(this);
}

void DropTargets::hide() {
    targets_.clear();
}

gboolean DropTargets::Target::dropped(GdkDragContext* context, int x, int y, guint time) {
    const Source* source = targets.dragged_;
    if (source != nullptr) {
        const Size size = source->view.size();
        const Rect& bounds = output.screen.bounds;
        // The picture's corner is at the pointer.
        const Rect frame = snapped({bounds.x + x, bounds.y + y, size.width, size.height}, {}, output.screen.area);
        Instance instance = source->instance;
        instance.output = output.screen.name;
        instance.position = Position{frame.x - bounds.x, frame.y - bounds.y};
        targets.dropped_(instance);
    }
    gtk_drag_finish(context, static_cast<gboolean>(source != nullptr), FALSE, time);
    return TRUE;
}

} // namespace host
