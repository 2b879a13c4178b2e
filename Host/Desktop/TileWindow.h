// The window of one tile: shows its picture and reports what the user does with it.
//
// The parts of the picture are GTK widgets that draw nothing, so the keyboard goes from link to link as in every
// window, and assistive technology finds each with its name, its place and its action. A drag may begin on any of
// them: the window's own gesture sees the pointer first.
#pragma once

#include "Host/Desktop/DesktopWindow.h"
#include "Host/Desktop/TilePaint.h"
#include "Host/Drawing/RenderedTile.h"

#include <cairo.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace host {

/// Something on a tile, and what a click on it does.
struct TilePart {
    enum class Action {
        none,
        /// Opens the item's link.
        open,
        /// Shows why the tile could not be updated.
        explain,
        /// Undoes the removal of the tile.
        undo,
    };
    AccessibleItem item;
    Action action = Action::none;
    bool operator==(const TilePart&) const = default;
};

/// The items of a rendered tile, with links that open; first the tile itself if it has a link of its own, called
/// `name`.
std::vector<TilePart> tileParts(const RenderedTile& rendered, const std::string& name);

enum class DragEnd { dropped, cancelled };

class TileWindow {
  public:
    /// All are required.
    struct Handlers {
        std::function<void(const TilePart& part)> activated;
        /// `url` is that of the link under the pointer or with the focus, else the tile's own.
        std::function<void(const std::optional<std::string>& url, const GdkEvent* event)> menuRequested;
        /// `distance` is from where the drag began.
        std::function<void(Point distance)> dragged;
        std::function<void(DragEnd end)> dragEnded;
        std::function<void()> keyPressed;
        std::function<void()> firstDrawn;
        /// The screen has another scale.
        std::function<void()> scaleChanged;
    };

    /// `stacking` must outlive this.
    TileWindow(Handlers handlers, Stacking& stacking);
    TileWindow(const TileWindow&) = delete;
    TileWindow& operator=(const TileWindow&) = delete;
    ~TileWindow();

    /// `frame` is on the desktop of all screens, without the shadow.
    void put(const Output& output, const Rect& frame);
    void hide() { window_.hide(); }

    /// `name` is what the widget is called.
    void show(RenderedTile rendered, std::vector<TilePart> parts, const std::string& name);
    const RenderedTile& rendered() const { return rendered_; }

    void setDimmed(bool isDimmed);

    GtkWidget* widget() const { return window_.widget(); }
    /// Whether it has been on the screen.
    bool isDrawn() const { return isDrawn_; }
    int deviceScale() const { return gtk_widget_get_scale_factor(window_.widget()); }

  private:
    static void clicked(GtkButton* button, gpointer self);
    void draw(cairo_t* cairo);
    gboolean pressed(GdkEvent* event);
    void dragBegun(double x, double y);
    void dragMoved(double x, double y);
    void dragFinished(double x, double y);
    void dragCancelled(GdkEventSequence* sequence);
    gboolean keyPressed(GdkEvent* event);
    void onScaleChanged(GParamSpec* property) const;

    void applyParts();
    void makeParts();
    void shape();
    /// Points to the window's units.
    double unit() const {
        return rendered_.picture.width > 0 ? frame_.width / (rendered_.picture.width / rendered_.scale) : 1;
    }
    Rect inWindow(const Rect& points) const;
    /// Whether the part is the tile itself.
    bool isWhole(std::size_t part) const;
    std::optional<std::size_t> partOf(const GtkWidget* widget) const;
    std::optional<std::size_t> focusedPart() const;
    std::optional<std::size_t> partWith(GtkStateFlags state) const;
    Mark markOf(std::size_t part) const;
    std::optional<std::string> urlOf(std::optional<std::size_t> part) const;

    Handlers handlers_;
    DesktopWindow window_;
    GtkWidget* fixed_;
    RenderedTile rendered_;
    std::vector<TilePart> parts_;
    /// Replace the parts once no button is down.
    std::optional<std::vector<TilePart>> nextParts_;
    /// The widgets of the parts, in their order; owned by the container.
    std::vector<GtkWidget*> widgets_;
    Rect frame_;
    /// The shadow's width on each side.
    double outset_ = 0;
    bool isDrawn_ = false;
    bool isDimmed_ = false;
    ObjectHandle<GtkGesture> drag_;
    bool isDragged_ = false;
    ScheduledCall applyingParts_;
};

} // namespace host
