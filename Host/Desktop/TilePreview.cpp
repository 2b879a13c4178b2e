#include "Host/Desktop/TilePreview.h"

#include "Host/Desktop/TilePaint.h"
#include "Host/Desktop/WaitingView.h"
#include "Host/Layout/Measures.h"
#include "Platform/Foundation/Clock.h"

#include <algorithm>
#include <cmath>

namespace host {

TilePreview::TilePreview(std::string family, std::string name, RendererCache& renderers,
                         const DesktopSettings& settings)
    : family_(std::move(family)), renderers_(renderers), settings_(settings),
      area_(GTK_WIDGET(g_object_ref_sink(gtk_drawing_area_new()))) {
    AtkObject* accessible = gtk_widget_get_accessible(widget());
    atk_object_set_role(accessible, ATK_ROLE_IMAGE);
    atk_object_set_name(accessible, name.c_str());
    connect<&TilePreview::draw>(widget(), "draw", this);
    connect<&TilePreview::restyle>(widget(), "notify::scale-factor", this);
    restyle();
}

TilePreview::~TilePreview() {
    g_signal_handlers_disconnect_by_data(widget(), this);
}

void TilePreview::load(HostApplication& host, const Instance& instance, EntryRequest::Method method) {
    if (std::exchange(family_, instance.family) != instance.family) {
        entry_.reset();
        restyle();
    }
    const EntryRequest request{.method = method,
                               .kind = instance.kind,
                               .family = instance.family,
                               .configuration = {instance.configuration.begin(), instance.configuration.end()}};
    host.requestEntries(instance.extension, request,
                        lifetime_.weakly([this, number = ++requests_](const auto& entries) {
                            if (entries && number == requests_) {
                                entry_ = *entryAt(*entries, platform::SystemClock::shared().now());
                                restyle();
                            }
                        }));
}

void TilePreview::restyle() {
    const double scale = gtk_widget_get_scale_factor(widget()) * size().width / settings_.tileSize(family_).width;
    const TileStyle style = settings_.tileStyle(scale, entry_ ? Redaction::none : Redaction::placeholder);
    rendered_ =
        renderTile(entry_ ? entry_->view : waitingView(family_), familySize(family_), style, renderers_.renderer());
    gtk_widget_set_size_request(widget(), static_cast<int>(std::ceil(size().width)),
                                static_cast<int>(std::ceil(size().height)));
    gtk_widget_queue_draw(widget());
}

Size TilePreview::size() const {
    const Size full = settings_.tileSize(family_);
    const double factor = std::min(1.0, maxWidth_ / full.width);
    return {full.width * factor, full.height * factor};
}

void TilePreview::limitWidth(double maxWidth) {
    const double before = size().width;
    maxWidth_ = maxWidth;
    if (size().width != before) {
        restyle();
    }
}

gboolean TilePreview::draw(cairo_t* cairo) {
    paintTile(cairo, rendered_, {0, 0, size().width, size().height}, Backdrop::window);
    return TRUE;
}

} // namespace host
