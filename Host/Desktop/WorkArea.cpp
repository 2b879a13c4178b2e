#include "Host/Desktop/WorkArea.h"

#include <gtk-layer-shell.h>

#include <array>

namespace host {
namespace {

gboolean clear(GtkWidget* /*window*/, cairo_t* cairo, gpointer /*unused*/) {
    cairo_set_operator(cairo, CAIRO_OPERATOR_CLEAR);
    cairo_paint(cairo);
    return TRUE;
}

GtkWidget* makeProbe(GdkMonitor* monitor, const std::array<GtkLayerShellEdge, 3>& edges) {
    GtkWidget* widget = gtk_window_new(GTK_WINDOW_TOPLEVEL);
    GtkWindow* window = GTK_WINDOW(widget);
    gtk_widget_set_app_paintable(widget, TRUE);
    gtk_widget_set_visual(widget, gdk_screen_get_rgba_visual(gtk_widget_get_screen(widget)));
    gtk_widget_set_size_request(widget, 1, 1);
    gtk_layer_init_for_window(window);
    gtk_layer_set_namespace(window, "widgethost");
    gtk_layer_set_layer(window, GTK_LAYER_SHELL_LAYER_BACKGROUND);
    gtk_layer_set_monitor(window, monitor);
    for (const GtkLayerShellEdge edge : edges) {
        gtk_layer_set_anchor(window, edge, TRUE);
    }
    const RegionHandle nothing(cairo_region_create());
    gtk_widget_input_shape_combine_region(widget, nothing.get());
    // Hidden from assistive technology.
    atk_object_set_role(gtk_widget_get_accessible(widget), ATK_ROLE_FILLER);
    g_signal_connect(widget, "draw", G_CALLBACK(&clear), nullptr);
    // The compositor closes it with its screen.
    g_signal_connect(widget, "delete-event", G_CALLBACK(&gtk_widget_hide_on_delete), nullptr);
    return widget;
}

} // namespace

WorkArea::WorkArea(GdkMonitor* monitor, std::function<void()> changed)
    : changed_(std::move(changed)),
      horizontal_(
          makeProbe(monitor, {GTK_LAYER_SHELL_EDGE_TOP, GTK_LAYER_SHELL_EDGE_LEFT, GTK_LAYER_SHELL_EDGE_RIGHT})),
      vertical_(
          makeProbe(monitor, {GTK_LAYER_SHELL_EDGE_LEFT, GTK_LAYER_SHELL_EDGE_TOP, GTK_LAYER_SHELL_EDGE_BOTTOM})) {
    connect<&WorkArea::onWidth>(horizontal_.get(), "size-allocate", this);
    connect<&WorkArea::onHeight>(vertical_.get(), "size-allocate", this);
    gtk_widget_show(horizontal_.get());
    gtk_widget_show(vertical_.get());
}

WorkArea::~WorkArea() {
    g_signal_handlers_disconnect_by_data(horizontal_.get(), this);
    g_signal_handlers_disconnect_by_data(vertical_.get(), this);
}

void WorkArea::update(const Size& size) {
    if (size != size_) {
        size_ = size;
        changed_();
    }
}

} // namespace host
