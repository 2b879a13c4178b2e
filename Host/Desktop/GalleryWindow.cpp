#include "Host/Desktop/GalleryWindow.h"

#include "Host/Connection/Requests.h"
#include "Host/Desktop/Labels.h"
#include "Host/Desktop/TileMenu.h"
#include "Host/Desktop/TilePaint.h"
#include "Host/Layout/Measures.h"
#include "Platform/Foundation/Localization.h"

#include <fmt/format.h>

namespace host {

using platform::localized;

namespace {

constexpr int defaultWidth = 1060;
constexpr int defaultHeight = 720;
constexpr int pageMargin = 24;
constexpr int sidebarWidth = 190;
/// Texts stand where the pictures do, which have their shadow around them.
constexpr int textInset = static_cast<int>(shadowMargin);
/// Sizes stand side by side as far as the largest is wide.
constexpr double rowWidth = 752;

} // namespace

struct GalleryWindow::Card {
    Card(Instance placed, const std::string& name, RendererCache& renderers, const DesktopSettings& settings)
        : instance(std::move(placed)), view(instance.family, name, renderers, settings) {}

    Instance instance;
    TilePreview view;
    GalleryWindow* gallery = nullptr;
};

GalleryWindow::GalleryWindow(HostApplication& host, Catalog& catalog, RendererCache& renderers,
                             const DesktopSettings& settings, Outputs& outputs, Add add, std::function<void()> closed)
    : host_(host), catalog_(catalog), renderers_(renderers), settings_(settings), drop_(outputs, add),
      add_(std::move(add)), closed_(std::move(closed)), window_(gtk_window_new(GTK_WINDOW_TOPLEVEL)),
      box_(gtk_box_new(GTK_ORIENTATION_VERTICAL, 0)), stack_(gtk_stack_new()) {
    GtkWindow* window = GTK_WINDOW(window_.get());
    gtk_window_set_title(window, localized("Widgets").c_str());
    gtk_window_set_default_size(window, defaultWidth, defaultHeight);
    GtkWidget* sidebar = gtk_stack_sidebar_new();
    gtk_stack_sidebar_set_stack(GTK_STACK_SIDEBAR(sidebar), GTK_STACK(stack_));
    gtk_widget_set_size_request(sidebar, sidebarWidth, -1);
    gtk_stack_set_vhomogeneous(GTK_STACK(stack_), FALSE);
    GtkWidget* box = gtk_box_new(GTK_ORIENTATION_HORIZONTAL, 0);
    gtk_box_pack_start(GTK_BOX(box), sidebar, FALSE, FALSE, 0);
    gtk_box_pack_start(GTK_BOX(box), gtk_separator_new(GTK_ORIENTATION_VERTICAL), FALSE, FALSE, 0);
    gtk_box_pack_start(GTK_BOX(box), stack_, TRUE, TRUE, 0);
    gtk_box_pack_end(GTK_BOX(box_), box, TRUE, TRUE, 0);
    gtk_container_add(GTK_CONTAINER(window_.get()), box_);
    gtk_widget_show_all(box_);
    connect<&GalleryWindow::deleted>(window_.get(), "delete-event", this);
    const auto extensions = catalog_.extensions();
    for (const std::string& extension : extensions) {
        ask(extension);
    }
    if (extensions.empty()) {
        sayNothing(localized("No extension is installed."), {});
    }
}

GalleryWindow::~GalleryWindow() = default;

void GalleryWindow::present() {
    gtk_window_present(GTK_WINDOW(window_.get()));
}

void GalleryWindow::say(const std::string& notice, std::function<void()> showExamples) {
    GtkWidget* bar = gtk_info_bar_new();
    gtk_info_bar_set_message_type(GTK_INFO_BAR(bar), GTK_MESSAGE_INFO);
    gtk_container_add(GTK_CONTAINER(gtk_info_bar_get_content_area(GTK_INFO_BAR(bar))), makeText(notice));
    showExamples_ = std::move(showExamples);
    if (showExamples_) {
        gtk_info_bar_add_button(GTK_INFO_BAR(bar), localized("Show Examples").c_str(), GTK_RESPONSE_YES);
        connect<&GalleryWindow::responded>(bar, "response", this);
    }
    gtk_box_pack_start(GTK_BOX(box_), bar, FALSE, FALSE, 0);
    gtk_widget_show_all(bar);
}

void GalleryWindow::responded(int /*response*/) {
    showExamples_();
}

void GalleryWindow::restyle() {
    for (const auto& card : cards_) {
        card->view.restyle();
    }
}

void GalleryWindow::ask(const std::string& extension) {
    catalog_.describe(host_, extension,
                      lifetime_.weakly([this, extension](const platform::Outcome<std::vector<WidgetInfo>>& widgets) {
                          if (!widgets) {
                              sayNothing(localized("An extension does not say what widgets it has."),
                                         widgets.error().message);
                              return;
                          }
                          for (const WidgetInfo& widget : *widgets) {
                              addWidget(extension, widget);
                          }
                      }));
}

void GalleryWindow::addWidget(const std::string& extension, const WidgetInfo& widget) {
    GtkWidget* page = gtk_box_new(GTK_ORIENTATION_VERTICAL, 0);
    gtk_container_set_border_width(GTK_CONTAINER(page), pageMargin);
    for (GtkWidget* text : {makeTitle(widget.displayName), makeNote(widget.description)}) {
        gtk_widget_set_margin_start(text, textInset);
        gtk_box_pack_start(GTK_BOX(page), text, FALSE, FALSE, 4);
    }
    GtkWidget* row = nullptr;
    double width = 0;
    for (const std::string& family : widget.families) {
        const double needed = familySize(family).width;
        if (row == nullptr || width + needed > rowWidth) {
            row = gtk_box_new(GTK_ORIENTATION_HORIZONTAL, 0);
            gtk_box_pack_start(GTK_BOX(page), row, FALSE, FALSE, 0);
            width = 0;
        }
        width += needed;
        const Instance instance{.extension = extension, .kind = widget.kind, .family = family, .configuration = {}};
        gtk_box_pack_start(GTK_BOX(row), makeCard(instance, widget), FALSE, FALSE, 0);
    }
    GtkWidget* scroller = gtk_scrolled_window_new(nullptr, nullptr);
    gtk_container_add(GTK_CONTAINER(scroller), page);
    gtk_widget_show_all(scroller);
    gtk_stack_add_titled(GTK_STACK(stack_), scroller, fmt::format("{}/{}", extension, widget.kind).c_str(),
                         widget.displayName.c_str());
    // The sidebar does not mark the first page of itself: that was there before its row.
    g_object_notify(G_OBJECT(stack_), "visible-child");
}

GtkWidget* GalleryWindow::makeCard(const Instance& instance, const WidgetInfo& widget) {
    const std::string title = familyTitle(instance.family);
    auto& card = *cards_.emplace_back(
        std::make_unique<Card>(instance, fmt::format("{}, {}", widget.displayName, title), renderers_, settings_));
    card.gallery = this;

    GtkWidget* button = gtk_button_new_with_label(localized("Add").c_str());
    // Several say the same to those who see.
    atk_object_set_name(gtk_widget_get_accessible(button),
                        fmt::format("{} {}, {}", localized("Add"), widget.displayName, title).c_str());
    g_signal_connect(button, "clicked", G_CALLBACK(+[](GtkButton* /*button*/, gpointer self) {
                         const Card& chosen = *static_cast<Card*>(self);
                         chosen.gallery->add_(chosen.instance);
                     }),
                     &card);
    GtkWidget* foot = gtk_box_new(GTK_ORIENTATION_HORIZONTAL, 0);
    gtk_widget_set_margin_start(foot, textInset);
    gtk_widget_set_margin_end(foot, textInset);
    gtk_widget_set_margin_bottom(foot, pageMargin);
    gtk_box_pack_start(GTK_BOX(foot), makeNote(title), TRUE, TRUE, 0);
    gtk_box_pack_end(GTK_BOX(foot), button, FALSE, FALSE, 0);

    GtkWidget* handle = gtk_event_box_new();
    gtk_container_add(GTK_CONTAINER(handle), card.view.widget());
    drop_.addSource(handle, card.instance, card.view);
    GtkWidget* box = gtk_box_new(GTK_ORIENTATION_VERTICAL, 0);
    gtk_box_pack_start(GTK_BOX(box), handle, FALSE, FALSE, 0);
    gtk_box_pack_start(GTK_BOX(box), foot, FALSE, FALSE, 0);

    const EntryRequest request{.method = EntryRequest::Method::snapshot,
                               .kind = instance.kind,
                               .family = instance.family,
                               .configuration = {}};
    host_.requestEntries(instance.extension, request, lifetime_.weakly([&card](const auto& entries) {
        if (entries) {
            card.view.show(*entryAt(*entries, platform::SystemClock::shared().now()));
        }
    }));
    return box;
}

void GalleryWindow::sayNothing(const std::string& text, const std::string& reason) {
    GtkWidget* page = gtk_box_new(GTK_ORIENTATION_VERTICAL, 6);
    gtk_widget_set_halign(page, GTK_ALIGN_CENTER);
    gtk_widget_set_valign(page, GTK_ALIGN_CENTER);
    gtk_container_add(GTK_CONTAINER(page), makeText(text));
    if (!reason.empty()) {
        gtk_container_add(GTK_CONTAINER(page), makeNote(reason));
    }
    gtk_widget_show_all(page);
    gtk_stack_add_titled(GTK_STACK(stack_), page, reason.c_str(), localized("Not available").c_str());
}

gboolean GalleryWindow::deleted(GdkEvent* /*event*/) {
    // It may be the end of this.
    const auto closed = closed_;
    closed();
    return TRUE;
}

} // namespace host
