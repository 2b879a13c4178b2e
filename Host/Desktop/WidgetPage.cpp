#include "Host/Desktop/WidgetPage.h"

#include "Host/Arrangement/FreePlace.h"
#include "Host/Desktop/Labels.h"
#include "Host/Desktop/TileMenu.h"
#include "Host/Layout/Measures.h"
#include "Platform/Foundation/Localization.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

namespace host {

using platform::localized;

namespace {

constexpr int pageMargin = 24;
constexpr int textSpacing = 4;
/// How far a raised preview moves, as in the style.
constexpr double raise = 3;
/// The height of the two texts above the previews, each on one line.
constexpr double textHeight = 64;
constexpr double minTextWidth = 480;

std::vector<Size> sizesOf(const std::vector<std::string>& families, const DesktopSettings& settings) {
    std::vector<Size> sizes;
    for (const std::string& family : families) {
        sizes.push_back(settings.tileSize(family));
    }
    return sizes;
}

Size extentOf(const std::vector<Rect>& frames) {
    Size extent;
    for (const Rect& frame : frames) {
        extent = {std::max(extent.width, frame.right() + tileGap), std::max(extent.height, frame.bottom() + tileGap)};
    }
    return extent;
}

} // namespace

struct WidgetPage::Preview {
    void clicked() const { page.add_(instance); }

    WidgetPage& page;
    Instance instance;
    TilePreview view;
    ObjectHandle<GtkWidget> button{GTK_WIDGET(g_object_ref_sink(gtk_button_new()))};
};

WidgetPage::WidgetPage(HostApplication& host, RendererCache& renderers, const DesktopSettings& settings,
                       DropTargets& drop, const std::string& extension, const WidgetInfo& widget, Add add)
    : host_(host), renderers_(renderers), settings_(settings), drop_(drop), add_(std::move(add)),
      scroller_(GTK_WIDGET(g_object_ref_sink(gtk_scrolled_window_new(nullptr, nullptr)))),
      texts_(gtk_box_new(GTK_ORIENTATION_VERTICAL, textSpacing)), area_(gtk_fixed_new()) {
    for (GtkWidget* text : {makeTitle(widget.displayName), makeNote(widget.description)}) {
        // `pack` sets their width.
        gtk_label_set_max_width_chars(GTK_LABEL(text), 1);
        gtk_container_add(GTK_CONTAINER(texts_), text);
    }
    g_object_set(texts_, "margin", pageMargin, "margin-bottom", 0, "halign", GTK_ALIGN_START, nullptr);
    GtkWidget* column = gtk_box_new(GTK_ORIENTATION_VERTICAL, 0);
    gtk_container_add(GTK_CONTAINER(column), texts_);
    gtk_container_add(GTK_CONTAINER(column), area_);
    gtk_widget_set_halign(column, GTK_ALIGN_CENTER);
    gtk_container_add(GTK_CONTAINER(scroller_.get()), column);
    for (const std::string& family : widget.families) {
        addPreview({.extension = extension, .kind = widget.kind, .family = family, .configuration = {}}, widget);
    }
    gtk_widget_show_all(scroller_.get());
    connect<&WidgetPage::allocated>(scroller_.get(), "size-allocate", this);
}

WidgetPage::~WidgetPage() {
    g_signal_handlers_disconnect_by_data(scroller_.get(), this);
}

void WidgetPage::restyle() {
    for (const auto& preview : previews_) {
        preview->view.restyle();
    }
    pack();
}

Size WidgetPage::sizeFor(const std::vector<std::string>& families, int columns, const DesktopSettings& settings) {
    const double column = settings.tileSize("small").width + tileGap;
    const Size extent = extentOf(packTiles(sizesOf(families, settings), columns * column + tileGap));
    return {extent.width, extent.height + textHeight * settings.look().textScale + pageMargin};
}

void WidgetPage::addPreview(const Instance& instance, const WidgetInfo& widget) {
    const std::string name = fmt::format("{}, {}", widget.displayName, familyTitle(instance.family));
    auto& preview =
        *previews_.emplace_back(new Preview{*this, instance, {instance.family, name, renderers_, settings_}});
    GtkWidget* button = preview.button.get();
    addClass(button, tileClass);
    setAccessibleName(button, fmt::format("{} {}", localized("Add"), name));
    gtk_container_add(GTK_CONTAINER(button), preview.view.widget());
    gtk_fixed_put(GTK_FIXED(area_), button, 0, 0);
    connect<&Preview::clicked>(button, "clicked", &preview);
    drop_.addSource(button, preview.instance, preview.view);
    preview.view.load(host_, instance, EntryRequest::Method::snapshot);
}

void WidgetPage::allocated(GdkRectangle* place) {
    if (std::exchange(width_, place->width) != place->width) {
        // GTK ignores changes of sizes during allocation.
        packing_.idle<&WidgetPage::pack>(this, G_PRIORITY_HIGH_IDLE);
    }
}

void WidgetPage::pack() {
    if (width_ <= 2 * tileGap) {
        return;
    }
    std::vector<Size> sizes;
    for (const auto& preview : previews_) {
        preview->view.limitWidth(width_ - 2 * tileGap);
        sizes.push_back(preview->view.size());
    }
    const auto frames = packTiles(sizes, width_);
    const Size extent = extentOf(frames);
    const bool isMirrored = settings_.look().direction == Direction::rightToLeft;
    for (std::size_t index = 0; index < frames.size(); ++index) {
        const Rect& frame = frames[index];
        const double left = isMirrored ? extent.width - frame.right() : frame.x;
        gtk_fixed_move(GTK_FIXED(area_), previews_[index]->button.get(), static_cast<int>(std::lround(left)),
                       static_cast<int>(std::lround(frame.y - raise)));
    }
    gtk_widget_set_size_request(area_, static_cast<int>(std::ceil(extent.width)),
                                static_cast<int>(std::ceil(extent.height)));
    const double textWidth =
        std::min<double>(width_, std::max(extent.width, minTextWidth * settings_.look().textScale));
    gtk_widget_set_size_request(texts_, static_cast<int>(textWidth) - 2 * pageMargin, -1);
}

} // namespace host
