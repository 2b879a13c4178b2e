#include "Host/Desktop/TilePreview.h"

#include "Host/Desktop/TilePaint.h"
#include "Host/Desktop/WaitingView.h"
#include "Host/Layout/Measures.h"

#include <cmath>

namespace host {

TilePreview::TilePreview(std::string family, std::string name, RendererCache& renderers,
                         const DesktopSettings& settings)
    : family_(std::move(family)), renderers_(renderers), settings_(settings),
      area_(GTK_WIDGET(g_object_ref_sink(gtk_drawing_area_new()))) {
    AtkObject* accessible = gtk_widget_get_accessible(widget());
    atk_object_set_role(accessible, ATK_ROLE_IMAGE);
    atk_object_set_name(accessible, name.c_str());
    gtk_widget_set_halign(widget(), GTK_ALIGN_CENTER);
    gtk_widget_set_valign(widget(), GTK_ALIGN_START);
    connect<&TilePreview::draw>(widget(), "draw", this);
    connect<&TilePreview::scaleNoticed>(widget(), "notify::scale-factor", this);
    restyle();
}

TilePreview::~TilePreview() {
    g_signal_handlers_disconnect_by_data(widget(), this);
}

void TilePreview::show(const Entry& entry) {
    entry_ = entry;
    restyle();
}

void TilePreview::restyle() {
    const TileStyle style =
        settings_.tileStyle(gtk_widget_get_scale_factor(widget()), entry_ ? Redaction::none : Redaction::placeholder);
    rendered_ =
        renderTile(entry_ ? entry_->view : waitingView(family_), familySize(family_), style, renderers_.renderer());
    const auto withShadow = [](double length) { return static_cast<int>(std::ceil(length + 2 * shadowMargin)); };
    gtk_widget_set_size_request(widget(), withShadow(size().width), withShadow(size().height));
    gtk_widget_queue_draw(widget());
}

Size TilePreview::size() const {
    return settings_.tileSize(family_);
}

void TilePreview::scaleNoticed(GParamSpec* /*property*/) {
    restyle();
}

gboolean TilePreview::draw(cairo_t* cairo) {
    paintTile(cairo, rendered_, {shadowMargin, shadowMargin, size().width, size().height}, Backdrop::transparent);
    return TRUE;
}

} // namespace host
