#include "Host/Desktop/GalleryWindow.h"

#include "Host/Desktop/TileMenu.h"
#include "Host/Desktop/WidgetSymbol.h"
#include "Platform/Foundation/Localization.h"

#include <fmt/format.h>

#include <algorithm>

namespace host {

using platform::localized;

namespace {

/// In characters, and about as many units of the window.
constexpr int sidebarWidth = 12;
constexpr double sidebarSize = 190;
constexpr int spacing = 12;
constexpr double symbolSize = 18;
constexpr guint noticeMilliseconds = 8000;
/// With more widgets than this there is a search field.
constexpr std::size_t maxUnsearched = 8;
/// Of the header bar, which a window's default size leaves out.
constexpr double headerHeight = 48;
/// The widest family's.
constexpr int openColumns = 4;
/// In a narrower window the sidebar has symbols alone, so that a page has room for three small tiles in a row.
constexpr double collapseWidth = 800;
/// For a widget without a symbol of its own.
constexpr const char* genericSymbol = "unknown";
constexpr const char* failureSymbol = "exclamationmark.circle";
constexpr const char* entryKey = "entry";

} // namespace

struct GalleryWindow::Entry {
    /// The extension's place among the others, and its name.
    std::size_t place = 0;
    std::string heading;
    /// The widget's kind and the text to search; empty on a page with a failure.
    std::string kind = {};
    std::string text = {};
    GtkWidget* page = nullptr;
    std::unique_ptr<WidgetPage> widget = nullptr;
    bool hasSymbol = false;
    GtkWidget* row = gtk_list_box_row_new();
    GtkWidget* label = nullptr;
    GtkWidget* symbol = nullptr;

    static Entry& of(GtkListBoxRow* row) { return *static_cast<Entry*>(g_object_get_data(G_OBJECT(row), entryKey)); }
};

GalleryWindow::GalleryWindow(HostApplication& host, Catalog& catalog, RendererCache& renderers,
                             const DesktopSettings& settings, Outputs& outputs, Actions actions)
    : host_(host), catalog_(catalog), renderers_(renderers), settings_(settings), actions_(std::move(actions)),
      drop_(outputs, [this](const Instance& instance) { add(instance); }), window_(gtk_window_new(GTK_WINDOW_TOPLEVEL)),
      column_(gtk_box_new(GTK_ORIENTATION_VERTICAL, 0)), search_(gtk_search_entry_new()), list_(gtk_list_box_new()),
      stack_(gtk_stack_new()), notice_(gtk_revealer_new()), noticeText_(gtk_label_new(nullptr)) {
    loadWindowStyle(settings_);
    GtkWindow* window = GTK_WINDOW(window_.get());
    gtk_window_set_title(window, localized("Widgets").c_str());
    gtk_window_set_icon_name(window, g_get_prgname());
    gtk_window_set_titlebar(window, makeHeader());

    GtkWidget* overlay = gtk_overlay_new();
    gtk_container_add(GTK_CONTAINER(overlay), stack_);
    gtk_overlay_add_overlay(GTK_OVERLAY(overlay), makeNotice());
    GtkWidget* box = gtk_box_new(GTK_ORIENTATION_HORIZONTAL, 0);
    gtk_box_pack_start(GTK_BOX(box), makeSidebar(), FALSE, FALSE, 0);
    gtk_box_pack_start(GTK_BOX(box), gtk_separator_new(GTK_ORIENTATION_VERTICAL), FALSE, FALSE, 0);
    gtk_box_pack_start(GTK_BOX(box), overlay, TRUE, TRUE, 0);
    gtk_box_pack_end(GTK_BOX(column_), box, TRUE, TRUE, 0);
    gtk_container_add(GTK_CONTAINER(window), column_);
    gtk_widget_show_all(column_);

    const Size available = availableSize();
    const Size page = WidgetPage::sizeFor({"small", "medium", "large", "extraLarge"}, openColumns, settings_);
    const double width = page.width + sidebarSize * settings_.look().textScale;
    gtk_window_set_default_size(window, static_cast<int>(std::min(available.width, width)),
                                static_cast<int>(std::min(available.height - headerHeight, page.height)));
    connect<&GalleryWindow::allocated>(box, "size-allocate", this);
    connect<&GalleryWindow::keyPressed>(window, "key-press-event", this);
    connect<&GalleryWindow::deleted>(window, "delete-event", this);

    const auto extensions = catalog_.extensions();
    for (std::size_t place = 0; place < extensions.size(); ++place) {
        describe(extensions[place], place);
    }
    if (extensions.empty()) {
        showMessage(
            {.symbol = "rectangle.stack", .title = localized("No extension is installed."), .note = {}, .button = {}},
            nullptr);
    }
}

GalleryWindow::~GalleryWindow() {
    g_signal_handlers_disconnect_by_data(list_, this);
    // Otherwise each destroyed row would make the next one's heading again.
    gtk_list_box_set_header_func(GTK_LIST_BOX(list_), nullptr, nullptr, nullptr);
}

GtkWidget* GalleryWindow::makeHeader() {
    GtkWidget* header = gtk_header_bar_new();
    gtk_header_bar_set_show_close_button(GTK_HEADER_BAR(header), TRUE);
    gtk_header_bar_set_title(GTK_HEADER_BAR(header), localized("Widgets").c_str());
    gtk_header_bar_set_subtitle(GTK_HEADER_BAR(header), localized("Click one, or drag it to its place").c_str());
    gtk_entry_set_placeholder_text(GTK_ENTRY(search_), localized("Search").c_str());
    setAccessibleName(search_, localized("Search"));
    gtk_header_bar_pack_start(GTK_HEADER_BAR(header), search_);
    gtk_widget_show_all(header);
    gtk_widget_hide(search_);
    connect<&GalleryWindow::search>(search_, "search-changed", this);
    return header;
}

GtkWidget* GalleryWindow::makeSidebar() {
    GtkWidget* sidebar = gtk_scrolled_window_new(nullptr, nullptr);
    gtk_scrolled_window_set_policy(GTK_SCROLLED_WINDOW(sidebar), GTK_POLICY_NEVER, GTK_POLICY_AUTOMATIC);
    addClass(sidebar, "gallery-sidebar");
    gtk_container_add(GTK_CONTAINER(sidebar), list_);
    g_object_set(list_, "margin-top", spacing, "margin-bottom", spacing, nullptr);
    setAccessibleName(list_, localized("Widgets"));
    gtk_list_box_set_sort_func(GTK_LIST_BOX(list_), &GalleryWindow::compareRows, this, nullptr);
    gtk_list_box_set_filter_func(GTK_LIST_BOX(list_), &GalleryWindow::isFound, this, nullptr);
    gtk_list_box_set_header_func(GTK_LIST_BOX(list_), &GalleryWindow::setHeading, this, nullptr);
    connect<&GalleryWindow::showPage>(list_, "row-selected", this);
    return sidebar;
}

GtkWidget* GalleryWindow::makeNotice() {
    GtkWidget* undo = gtk_button_new_with_label(localized("Undo").c_str());
    GtkWidget* close = gtk_button_new_from_icon_name("window-close-symbolic", GTK_ICON_SIZE_BUTTON);
    setAccessibleName(close, localized("Close"));
    gtk_button_set_relief(GTK_BUTTON(close), GTK_RELIEF_NONE);
    GtkWidget* box = gtk_box_new(GTK_ORIENTATION_HORIZONTAL, spacing);
    addClass(box, "app-notification");
    atk_object_set_role(gtk_widget_get_accessible(box), ATK_ROLE_NOTIFICATION);
    gtk_label_set_ellipsize(GTK_LABEL(noticeText_), PANGO_ELLIPSIZE_END);
    for (GtkWidget* each : {noticeText_, undo, close}) {
        gtk_container_add(GTK_CONTAINER(box), each);
    }
    gtk_container_add(GTK_CONTAINER(notice_), box);
    g_object_set(notice_, "halign", GTK_ALIGN_CENTER, "valign", GTK_ALIGN_START, nullptr);
    connect<&GalleryWindow::undo>(undo, "clicked", this);
    connect<&GalleryWindow::hideNotice>(close, "clicked", this);
    return notice_;
}

void GalleryWindow::present() {
    gtk_window_present(GTK_WINDOW(window_.get()));
}

void GalleryWindow::restyle() {
    loadWindowStyle(settings_);
    for (const auto& entry : entries_) {
        if (entry->widget) {
            entry->widget->restyle();
        }
    }
}

void GalleryWindow::showMessage(const StatusMessage& message, std::function<void()> pressed) {
    pressed_ = std::move(pressed);
    GtkWidget* button = nullptr;
    message_ = makeStatusPage(message, &button);
    if (button != nullptr) {
        connect<&GalleryWindow::buttonPressed>(button, "clicked", this);
    }
    gtk_container_add(GTK_CONTAINER(stack_), message_);
    gtk_stack_set_visible_child(GTK_STACK(stack_), message_);
}

void GalleryWindow::showBanner(const std::string& text) {
    GtkWidget* bar = gtk_info_bar_new();
    gtk_container_add(GTK_CONTAINER(gtk_info_bar_get_content_area(GTK_INFO_BAR(bar))), makeText(text));
    gtk_box_pack_start(GTK_BOX(column_), bar, FALSE, FALSE, 0);
    gtk_widget_show_all(bar);
}

void GalleryWindow::describe(const ExtensionInfo& extension, std::size_t place) {
    const auto addWidgets = [this, extension, place](const platform::Outcome<std::vector<WidgetInfo>>& widgets) {
        if (!widgets) {
            GtkWidget* page = makeStatusPage({.symbol = failureSymbol,
                                              .title = localized("An extension does not say what widgets it has."),
                                              .note = widgets.error().message,
                                              .button = {}});
            addEntry({.place = place, .heading = extension.name, .page = page}, localized("Not available"),
                     failureSymbol);
            return;
        }
        for (const WidgetInfo& widget : *widgets) {
            auto page = std::make_unique<WidgetPage>(host_, renderers_, settings_, drop_, extension.identifier, widget,
                                                     [this](const Instance& instance) { add(instance); });
            GtkWidget* scroller = page->widget();
            addEntry({.place = place,
                      .heading = extension.name,
                      .kind = widget.kind,
                      .text = widget.displayName + "\n" + widget.description,
                      .page = scroller,
                      .widget = std::move(page)},
                     widget.displayName, genericSymbol);
        }
        requestSymbols(extension.identifier, place);
    };
    catalog_.describe(host_, extension.identifier, lifetime_.weakly(addWidgets));
}

/// Sets the symbols of the extension's widgets to the first ones in their previews.
void GalleryWindow::requestSymbols(const std::string& extension, std::size_t place) {
    const auto request = [this, extension, place](const PreviewInfo& preview) {
        host_.request(extension, "preview", paramsOf({{"kind", preview.kind}, {"name", preview.name}}),
                      lifetime_.weakly([this, place, kind = preview.kind](const auto& answer) {
                          const auto views = answer ? readEntries(*answer) : platform::Unexpected{answer.error()};
                          const auto symbol = views ? widgetSymbolIn(views->front().view) : std::nullopt;
                          for (const auto& entry : entries_) {
                              if (symbol && entry->place == place && entry->kind == kind &&
                                  !std::exchange(entry->hasSymbol, true)) {
                                  setSymbol(entry->symbol, *symbol);
                              }
                          }
                      }));
    };
    host_.request(extension, "previews", "{}", lifetime_.weakly([request](const auto& answer) {
        if (const auto previews = answer ? readPreviews(*answer) : platform::Unexpected{answer.error()}) {
            std::for_each(previews->begin(), previews->end(), request);
        }
    }));
}

void GalleryWindow::addEntry(Entry added, const std::string& title, const std::string& symbol) {
    Entry& entry = *entries_.emplace_back(std::make_unique<Entry>(std::move(added)));
    entry.symbol = makeSymbol(symbol, static_cast<int>(symbolSize * settings_.look().textScale));
    entry.label = gtk_label_new(title.c_str());
    gtk_label_set_xalign(GTK_LABEL(entry.label), 0);
    gtk_label_set_width_chars(GTK_LABEL(entry.label), sidebarWidth);
    GtkWidget* box = gtk_box_new(GTK_ORIENTATION_HORIZONTAL, spacing);
    gtk_container_add(GTK_CONTAINER(box), entry.symbol);
    gtk_container_add(GTK_CONTAINER(box), entry.label);
    gtk_container_add(GTK_CONTAINER(entry.row), box);
    setAccessibleName(entry.row, title);
    g_object_set_data(G_OBJECT(entry.row), entryKey, &entry);
    gtk_widget_show_all(entry.row);
    gtk_container_add(GTK_CONTAINER(stack_), entry.page);

    hasHeadings_ = hasHeadings_ || entry.place != entries_.front()->place;
    gtk_container_add(GTK_CONTAINER(list_), entry.row);
    collapse();
    gtk_widget_set_visible(search_, static_cast<gboolean>(entries_.size() > maxUnsearched));
    GtkListBoxRow* selected = gtk_list_box_get_selected_row(GTK_LIST_BOX(list_));
    const bool hasPage = selected == nullptr ? message_ != nullptr : Entry::of(selected).widget != nullptr;
    if (!hasPage) {
        gtk_list_box_select_row(GTK_LIST_BOX(list_), GTK_LIST_BOX_ROW(entry.row));
    }
}

int GalleryWindow::compareRows(GtkListBoxRow* one, GtkListBoxRow* other, gpointer /*self*/) {
    return static_cast<int>(Entry::of(one).place) - static_cast<int>(Entry::of(other).place);
}

gboolean GalleryWindow::isFound(GtkListBoxRow* row, gpointer self) {
    const std::string wanted = gtk_entry_get_text(GTK_ENTRY(static_cast<GalleryWindow*>(self)->search_));
    return static_cast<gboolean>(wanted.empty() ||
                                 platform::localizedCaseInsensitiveContains(Entry::of(row).text, wanted));
}

void GalleryWindow::setHeading(GtkListBoxRow* row, GtkListBoxRow* before, gpointer self) {
    const auto& window = *static_cast<GalleryWindow*>(self);
    const Entry& entry = Entry::of(row);
    const bool isFirst = before == nullptr || Entry::of(before).place != entry.place;
    if (!isFirst || !window.hasHeadings_) {
        gtk_list_box_row_set_header(row, nullptr);
        return;
    }
    GtkWidget* heading = window.isCollapsed_ ? gtk_separator_new(GTK_ORIENTATION_HORIZONTAL) : makeNote(entry.heading);
    g_object_set(heading, "margin-start", 18, "margin-end", 18, "margin-top", 12, "margin-bottom", 6, nullptr);
    gtk_widget_show(heading);
    gtk_list_box_row_set_header(row, heading);
}

void GalleryWindow::showPage(GtkListBoxRow* row) {
    if (row != nullptr) {
        gtk_stack_set_visible_child(GTK_STACK(stack_), Entry::of(row).page);
    }
}

void GalleryWindow::search() {
    gtk_list_box_invalidate_filter(GTK_LIST_BOX(list_));
    const auto isShown = [](const auto& entry) { return gtk_widget_get_child_visible(entry->row) != FALSE; };
    if (const auto first = std::find_if(entries_.begin(), entries_.end(), isShown); first != entries_.end()) {
        gtk_list_box_select_row(GTK_LIST_BOX(list_), GTK_LIST_BOX_ROW((*first)->row));
    }
}

void GalleryWindow::add(const Instance& instance) {
    actions_.add(instance, lifetime_.weakly([this, instance](InstanceId id) {
        added_ = id;
        const WidgetInfo* widget = catalog_.widget(instance.extension, instance.kind);
        const std::string name = widget == nullptr ? instance.kind : widget->displayName;
        gtk_label_set_text(GTK_LABEL(noticeText_),
                           fmt::format("{}: {}, {}", localized("Added"), name, familyTitle(instance.family)).c_str());
        gtk_revealer_set_reveal_child(GTK_REVEALER(notice_), TRUE);
        hidingNotice_.after<&GalleryWindow::hideNotice>(noticeMilliseconds, this);
    }));
}

void GalleryWindow::undo() {
    actions_.remove(added_);
    hideNotice();
}

void GalleryWindow::hideNotice() {
    hidingNotice_.cancel();
    gtk_revealer_set_reveal_child(GTK_REVEALER(notice_), FALSE);
}

void GalleryWindow::allocated(GdkRectangle* place) {
    const bool isNarrow = place->width < collapseWidth * settings_.look().textScale;
    if (std::exchange(isCollapsed_, isNarrow) != isNarrow) {
        // GTK ignores changes of sizes during allocation.
        collapsing_.idle<&GalleryWindow::collapse>(this, G_PRIORITY_HIGH_IDLE);
    }
}

void GalleryWindow::collapse() {
    for (const auto& entry : entries_) {
        gtk_widget_set_visible(entry->label, static_cast<gboolean>(!isCollapsed_));
        gtk_widget_set_tooltip_text(entry->row, isCollapsed_ ? gtk_label_get_text(GTK_LABEL(entry->label)) : nullptr);
    }
    gtk_list_box_invalidate_headers(GTK_LIST_BOX(list_));
}

gboolean GalleryWindow::keyPressed(GdkEvent* event) {
    // Typing anywhere starts a search.
    return static_cast<gboolean>(gtk_widget_get_visible(search_) != FALSE &&
                                 gtk_window_get_focus(GTK_WINDOW(window_.get())) != search_ &&
                                 gtk_search_entry_handle_event(GTK_SEARCH_ENTRY(search_), event) != FALSE);
}

gboolean GalleryWindow::deleted() const {
    // May destroy this.
    const auto close = actions_.close;
    close();
    return TRUE;
}

} // namespace host
