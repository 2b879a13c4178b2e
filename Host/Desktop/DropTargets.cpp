#include "Host/Desktop/DropTargets.h"

#include "Host/Arrangement/Snapping.h"
#include "Host/Desktop/TilePaint.h"

#include <array>
#include <cmath>

namespace host {
namespace {

/// Nothing is handed over but the fact: both ends are here.
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
    g_signal_connect(window.widget(), "drag-drop", G_CALLBACK(&DropTargets::dropped), this);
    window.put(output, output.screen.bounds);
}

void DropTargets::addSource(GtkWidget* widget, const Instance& instance, const TilePreview& view) {
    Source* source = sources_.emplace_back(std::make_unique<Source>(Source{this, instance, view})).get();
    gtk_drag_source_set(widget, GDK_BUTTON1_MASK, target(), 1, GDK_ACTION_COPY);
    g_signal_connect(widget, "drag-begin", G_CALLBACK(&DropTargets::begun), source);
    g_signal_connect(widget, "drag-end", G_CALLBACK(&DropTargets::ended), source);
}

void DropTargets::begun(GtkWidget* widget, GdkDragContext* context, gpointer source) {
    const auto& begun = *static_cast<Source*>(source);
    DropTargets& self = *begun.targets;
    self.dragged_ = &begun;
    const RenderedTile& rendered = begun.view.rendered();
    const int scale = gtk_widget_get_scale_factor(widget);
    const SurfaceHandle icon(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, rendered.width, rendered.height));
    const CairoHandle cairo(cairo_create(icon.get()));
    paintTile(cairo.get(), rendered, {0, 0, static_cast<double>(rendered.width), static_cast<double>(rendered.height)},
              Backdrop::transparent);
    cairo_surface_set_device_scale(icon.get(), scale, scale);
    gtk_drag_set_icon_surface(context, icon.get());
    for (const Output& output : self.outputs_.all()) {
        self.targets_.push_back(std::make_unique<Target>(self, output));
    }
}

void DropTargets::ended(GtkWidget* /*widget*/, GdkDragContext* /*context*/, gpointer source) {
    DropTargets& self = *static_cast<Source*>(source)->targets;
    self.dragged_ = nullptr;
    // Not from within what they are told.
    self.hiding_.idle<&DropTargets::hide>(&self);
}

void DropTargets::hide() {
    targets_.clear();
}

gboolean DropTargets::dropped(GtkWidget* /*widget*/, GdkDragContext* context, int x, int y, guint time,
                              gpointer target) {
    const auto& at = *static_cast<Target*>(target);
    DropTargets& self = at.targets;
    const bool isOurs = self.dragged_ != nullptr;
    if (isOurs) {
        const Size size = self.dragged_->view.size();
        const Rect& bounds = at.output.screen.bounds;
        // The picture hangs at the pointer by its corner.
        const Rect frame = snapped({bounds.x + x, bounds.y + y, size.width, size.height}, {}, at.output.screen.area);
        Instance instance = self.dragged_->instance;
        instance.output = at.output.screen.name;
        instance.position = Position{frame.x - bounds.x, frame.y - bounds.y};
        self.dropped_(instance);
    }
    gtk_drag_finish(context, static_cast<gboolean>(isOurs), FALSE, time);
    return TRUE;
}

} // namespace host
