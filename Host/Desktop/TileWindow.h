// The window of one tile: shows its picture and reports the user's input.
//
// The parts of the picture are GTK widgets that draw nothing. So the keyboard moves from link to link as in every window,
// and assistive technology finds each part's name, place and action. A drag may begin on any of them, since the window's
// gesture sees the pointer first.
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

/// A part of a tile and the action of a click on it.
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

/// Returns the items of a rendered tile; first the tile itself, called `name`, if it has a link of its own.
std::vector<TilePart> tileParts(const RenderedTile& rendered, const std::string& name);

enum class DragEnd { dropped, cancelled };

class TileWindow {
  public:
    /// All are required.
    struct Handlers {
        std::function<void(const TilePart& part)> activated;
        /// `url` is that of the link under the pointer or with the focus, else the tile's own.
        std::function<void(const std::optional<std::string>& url, const GdkEvent* event)> menuRequested;
        /// `distance` is from the drag's start.
        std::function<void(Point distance)> dragged;
        std::function<void(DragEnd end)> dragEnded;
        std::function<void()> keyPressed;
        std::function<void()> firstDrawn;
        /// The screen's scale has changed.
        std::function<void()> scaleChanged;
    };

    /// Requires that `stacking` outlives this.
    TileWindow(Handlers handlers, Stacking& stacking);
    TileWindow(const TileWindow&) = delete;
    TileWindow& operator=(const TileWindow&) = delete;
    ~TileWindow();

    /// Shows the tile at `frame`, without the shadow, in coordinates of the desktop of all screens.
    void put(const Output& output, const Rect& frame);
    void hide() { window_.hide(); }

    /// Shows a picture. `name` is the widget's.
    void show(RenderedTile rendered, std::vector<TilePart> parts, const std::string& name);
    const RenderedTile& rendered() const { return rendered_; }

    void setDimmed(bool isDimmed);

    GtkWidget* widget() const { return window_.widget(); }
    /// Returns whether the window was drawn at least once.
    bool isDrawn() const { return isDrawn_; }
    int deviceScale() const { return gtk_widget_get_scale_factor(window_.widget()); }

  private:
    static void clicked(GtkButton* button, gpointer self);
    void draw(cairo_t* cairo);
    gboolean pressed(GdkEvent* event);
    void dragBegun();
    void dragMoved(double x, double y);
    void dragFinished();
    void dragCancelled();
    gboolean keyPressed(GdkEvent* event);
    void onScaleChanged() const { handlers_.scaleChanged(); }

    void applyParts();
    void makeParts();
    void shape();
    /// Returns the window's units per point.
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
    /// Will replace the parts once no mouse button is down.
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
