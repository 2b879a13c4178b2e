// The window of one tile: shows its picture, says what can be clicked, and what was.
//
// The tile's items are widgets of the toolkit that draw nothing: so the keyboard goes from link to link as in every
// window, and assistive technology finds each with its name, its place and what it does. A drag may begin on any of
// them: the window's own gesture sees the pointer first.
#pragma once

#include "Host/Arrangement/Arrangement.h"
#include "Host/Desktop/DesktopWindow.h"
#include "Host/Drawing/RenderedTile.h"

#include <cairo.h>

#include <optional>
#include <string>
#include <vector>

namespace host {

/// Something on a tile, and what it does.
struct TilePart {
    enum class Act {
        nothing,
        /// Opens the part's link.
        open,
        /// Says why the tile could not be brought up to date.
        explain,
        /// Takes the removal of the tile back.
        undo,
    };
    AccessibleItem part;
    Act act = Act::nothing;
};

/// The items of a rendered tile, with links that open; first the tile itself if it has a link of its own, called
/// `name`.
std::vector<TilePart> tileParts(const RenderedTile& rendered, const std::string& name);

/// What a tile's user does.
class TileHands {
  public:
    virtual ~TileHands() = default;
    virtual void activated(InstanceId id, const TilePart& part) = 0;
    /// `url` is that of the link under the pointer, or with the focus, or the tile's own. `event` is what asked.
    virtual void menuWanted(InstanceId id, const std::optional<std::string>& url, const GdkEvent* event) = 0;
    /// A drag: begun, `distance` from where it began, ended. `dropped` where the tile is to lie there now.
    virtual void dragged(InstanceId id, Point distance) = 0;
    virtual void dragEnded(InstanceId id, bool dropped) = 0;
    /// The tile is on the screen for the first time.
    virtual void seen(InstanceId id) = 0;
    /// The screen has another scale now, or is composited otherwise.
    virtual void scaleChanged(InstanceId id) = 0;
};

class TileWindow {
  public:
    /// `hands` and `stacking` must outlive this.
    TileWindow(InstanceId id, TileHands& hands, Stacking& stacking);
    TileWindow(const TileWindow&) = delete;
    TileWindow& operator=(const TileWindow&) = delete;
    ~TileWindow();

    /// Where it lies on the desktop of all screens, without its shadow.
    void put(const Output& output, const Rect& frame);
    void hide() { window_.hide(); }

    /// The tile's picture from now on. `name` is what the widget is called.
    void show(RenderedTile rendered, std::vector<TilePart> parts, const std::string& name);
    const RenderedTile& rendered() const { return rendered_; }

    /// A tile that is dragged leaves its shape behind.
    void setGhostly(bool isGhostly);
    /// How the focus and what the pointer is on are marked.
    void setMarks(const Rgba& accent, ColorScheme scheme);

    GtkWidget* widget() const { return window_.widget(); }
    /// Whether it has been on the screen.
    bool isSeen() const { return isSeen_; }
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
    gboolean focusChanged(GdkEvent* event) const;
    void focusMoved(GtkWidget* focused) const;
    void scaleNoticed(GParamSpec* property);

    void takeParts();
    void makeParts();
    void shape();
    /// Points to the window's units.
    double unit() const { return rendered_.width > 0 ? frame_.width / (rendered_.width / rendered_.scale) : 1; }
    Rect inWindow(const Rect& points) const;
    /// Whether the part is the tile itself.
    bool isWhole(std::size_t part) const;
    std::optional<std::size_t> partOf(const GtkWidget* widget) const;
    std::optional<std::size_t> focusedPart() const;
    std::optional<std::size_t> hoveredPart() const;
    std::optional<std::string> urlOf(std::optional<std::size_t> part) const;

    InstanceId id_;
    TileHands& hands_;
    DesktopWindow window_;
    GtkWidget* fixed_;
    RenderedTile rendered_;
    std::vector<TilePart> parts_;
    /// Those that are to take their place once no button is down.
    std::optional<std::vector<TilePart>> nextParts_;
    /// The widgets of the parts, in their order; the container has them.
    std::vector<GtkWidget*> widgets_;
    Rect frame_;
    /// What the shadow takes on each side.
    double outset_ = 0;
    Rgba accent_;
    ColorScheme scheme_ = ColorScheme::light;
    bool isSeen_ = false;
    bool isGhostly_ = false;
    ObjectHandle<GtkGesture> drag_;
    bool isDragged_ = false;
    LaterCall takingParts_;
};

} // namespace host
