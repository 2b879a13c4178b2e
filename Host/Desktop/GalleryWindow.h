// The gallery: every widget of the extensions, in each size and with its current content. A click adds a widget; a drag
// puts it in its place. Called on the main thread.
#pragma once

#include "Host/Desktop/Catalog.h"
#include "Host/Desktop/Labels.h"
#include "Host/Desktop/WidgetPage.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace host {

class GalleryWindow {
  public:
    struct Actions {
        /// Places a widget, and calls `added` with its id once that is written.
        std::function<void(const Instance& instance, std::function<void(InstanceId id)> added)> add;
        std::function<void(InstanceId id)> remove;
        /// Called when the user closes the window. May destroy it.
        std::function<void()> close;
    };

    /// Requires that all references outlive this.
    GalleryWindow(HostApplication& host, Catalog& catalog, RendererCache& renderers, const DesktopSettings& settings,
                  Outputs& outputs, Actions actions);
    GalleryWindow(const GalleryWindow&) = delete;
    GalleryWindow& operator=(const GalleryWindow&) = delete;
    ~GalleryWindow();

    void present();
    void restyle();
    /// Shows a message until a widget is chosen; `pressed` is called for its button.
    void showMessage(const StatusMessage& message, std::function<void()> pressed);
    /// Shows a text above the widgets.
    void showBanner(const std::string& text);

  private:
    /// A row of the sidebar and its page.
    struct Entry;

    GtkWidget* makeHeader();
    GtkWidget* makeSidebar();
    GtkWidget* makeNotice();
    void describe(const ExtensionInfo& extension, std::size_t place);
    void requestSymbols(const std::string& extension, std::size_t place);
    void addEntry(Entry added, const std::string& title, const std::string& symbol);
    void add(const Instance& instance);
    void undo();
    void hideNotice();
    void showPage(GtkListBoxRow* row);
    void search();
    void allocated(GdkRectangle* place);
    void collapse();
    void buttonPressed() { pressed_(); }
    gboolean keyPressed(GdkEvent* event);
    gboolean deleted() const;
    static int compareRows(GtkListBoxRow* one, GtkListBoxRow* other, gpointer self);
    static gboolean isFound(GtkListBoxRow* row, gpointer self);
    static void setHeading(GtkListBoxRow* row, GtkListBoxRow* before, gpointer self);

    HostApplication& host_;
    Catalog& catalog_;
    RendererCache& renderers_;
    const DesktopSettings& settings_;
    Actions actions_;
    DropTargets drop_;
    WindowHandle window_;
    GtkWidget* column_;
    GtkWidget* search_;
    GtkWidget* list_;
    GtkWidget* stack_;
    GtkWidget* notice_;
    GtkWidget* noticeText_;
    GtkWidget* message_ = nullptr;
    std::vector<std::unique_ptr<Entry>> entries_;
    bool hasHeadings_ = false;
    std::function<void()> pressed_;
    /// The instance that the notice is about.
    InstanceId added_ = 0;
    bool isCollapsed_ = false;
    ScheduledCall collapsing_;
    ScheduledCall hidingNotice_;
    Lifetime lifetime_;
};

} // namespace host
