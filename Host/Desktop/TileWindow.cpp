#include "Host/Desktop/TileWindow.h"

#include "Host/Desktop/TilePaint.h"
#include "Host/Layout/Measures.h"

#include <algorithm>
#include <cmath>

namespace host {
namespace {

/// How far the pointer moves before a click becomes a drag.
constexpr double dragThreshold = 8;

GtkWidget* makePart(const LayoutPart& part) {
    const bool isLink = part.role == LayoutPart::Role::link;
    GtkWidget* widget = isLink ? gtk_button_new() : gtk_drawing_area_new();
    if (isLink) {
        // What it looks like is in the picture.
        gtk_style_context_add_class(gtk_widget_get_style_context(widget), "tile-part");
    } else {
        gtk_widget_set_has_window(widget, FALSE);
    }
    AtkObject* accessible = gtk_widget_get_accessible(widget);
    atk_object_set_name(accessible, part.name.c_str());
    atk_object_set_description(accessible, part.description.c_str());
    switch (part.role) {
    case LayoutPart::Role::heading:
        atk_object_set_role(accessible, ATK_ROLE_HEADING);
        break;
    case LayoutPart::Role::text:
        atk_object_set_role(accessible, ATK_ROLE_LABEL);
        break;
    case LayoutPart::Role::link:
        atk_object_set_role(accessible, ATK_ROLE_LINK);
        break;
    }
    return widget;
}

/// The pointer's place in the window, whichever of its children the event went to.
Point pointIn(GtkWidget* window, const GdkEvent* event) {
    Point point;
    gdk_event_get_coords(event, &point.x, &point.y);
    GdkWindow* top = gtk_widget_get_window(window);
    for (GdkWindow* each = gdk_event_get_window(event); each != nullptr && each != top;
         each = gdk_window_get_effective_parent(each)) {
        gdk_window_coords_to_parent(each, point.x, point.y, &point.x, &point.y);
    }
    return point;
}

bool contains(const Rect& rect, Point point) {
    return point.x >= rect.x && point.x < rect.right() && point.y >= rect.y && point.y < rect.bottom();
}

/// The event window of a button would take what the tile's own window is to see.
void letPointerThrough(GtkWidget* button, gpointer /*unused*/) {
    gdk_window_set_pass_through(gtk_button_get_event_window(GTK_BUTTON(button)), TRUE);
}

} // namespace

std::vector<TilePart> partsOf(const Face& face, const std::string& name) {
    std::vector<TilePart> parts;
    if (face.widgetURL) {
        parts.push_back({.part = {.role = LayoutPart::Role::link,
                                  .frame = {0, 0, face.width / face.scale, face.height / face.scale},
                                  .name = name,
                                  .description = {},
                                  .url = *face.widgetURL},
                         .act = TilePart::Act::open});
    }
    for (const LayoutPart& part : face.parts) {
        const bool isLink = part.role == LayoutPart::Role::link;
        parts.push_back({part, isLink ? TilePart::Act::open : TilePart::Act::nothing});
    }
    return parts;
}

TileWindow::TileWindow(InstanceId id, TileHands& hands)
    : id_(id), hands_(hands),
      window_(DesktopWindow::Level::desktop, DesktopWindow::Input::all, [this](cairo_t* cairo) { draw(cairo); }),
      fixed_(gtk_fixed_new()) {
    gtk_container_add(GTK_CONTAINER(widget()), fixed_);
    gtk_widget_show(fixed_);
    gtk_widget_add_events(widget(), GDK_BUTTON_PRESS_MASK | GDK_BUTTON_RELEASE_MASK | GDK_POINTER_MOTION_MASK |
                                        GDK_LEAVE_NOTIFY_MASK);
    connect<&TileWindow::pressed>(widget(), "button-press-event", this);
    connect<&TileWindow::released>(widget(), "button-release-event", this);
    connect<&TileWindow::moved>(widget(), "motion-notify-event", this);
    connect<&TileWindow::left>(widget(), "leave-notify-event", this);
    connect<&TileWindow::keyPressed>(widget(), "key-press-event", this);
    connect<&TileWindow::focusChanged>(widget(), "focus-in-event", this);
    connect<&TileWindow::focusChanged>(widget(), "focus-out-event", this);
    connect<&TileWindow::focusMoved>(widget(), "set-focus", this);
    connect<&TileWindow::scaleNoticed>(widget(), "notify::scale-factor", this);
    connect<&TileWindow::compositionChanged>(gtk_widget_get_screen(widget()), "composited-changed", this);
}

TileWindow::~TileWindow() {
    g_signal_handlers_disconnect_by_data(gtk_widget_get_screen(widget()), this);
    g_signal_handlers_disconnect_by_data(widget(), this);
}

void TileWindow::put(const Output& output, const Rect& frame) {
    const bool isResized = frame.width != frame_.width || frame.height != frame_.height;
    frame_ = frame;
    output_ = output;
    const double outset = margin();
    window_.put(output, {frame.x - outset, frame.y - outset, frame.width + 2 * outset, frame.height + 2 * outset});
    if (isResized) {
        makeParts();
        shape();
    }
}

void TileWindow::show(Face face, std::vector<TilePart> parts, const std::string& name) {
    const bool hasOtherParts =
        !std::equal(parts.begin(), parts.end(), parts_.begin(), parts_.end(),
                    [](const TilePart& a, const TilePart& b) { return a.act == b.act && a.part == b.part; });
    face_ = std::move(face);
    gtk_window_set_title(GTK_WINDOW(widget()), name.c_str());
    if (hasOtherParts) {
        parts_ = std::move(parts);
        // They have no place before the tile has.
        if (frame_.width > 0) {
            makeParts();
        }
    }
    gtk_widget_queue_draw(widget());
}

void TileWindow::setGhostly(bool isGhostly) {
    isGhostly_ = isGhostly;
    gtk_widget_queue_draw(widget());
}

void TileWindow::setMarks(const Rgba& accent, ColorScheme scheme) {
    accent_ = accent;
    scheme_ = scheme;
}

void TileWindow::makeParts() {
    const auto focused = focusedPart();
    gtk_window_set_focus(GTK_WINDOW(widget()), nullptr);
    for (GtkWidget* each : widgets_) {
        gtk_widget_destroy(each);
    }
    widgets_.clear();
    hovered_.reset();
    for (const TilePart& part : parts_) {
        GtkWidget* each = makePart(part.part);
        const Rect frame = inWindow(part.part.frame);
        gtk_widget_set_size_request(each, std::max(1, static_cast<int>(frame.width)),
                                    std::max(1, static_cast<int>(frame.height)));
        gtk_fixed_put(GTK_FIXED(fixed_), each, static_cast<int>(frame.x), static_cast<int>(frame.y));
        if (GTK_IS_BUTTON(each) != FALSE) {
            g_signal_connect(each, "clicked", G_CALLBACK(&TileWindow::clicked), this);
            g_signal_connect_after(each, "realize", G_CALLBACK(&letPointerThrough), nullptr);
        }
        gtk_widget_show(each);
        widgets_.push_back(each);
    }
    // Whoever is on a row stays there when the list below changes.
    if (focused && *focused < widgets_.size()) {
        gtk_widget_grab_focus(widgets_[*focused]);
    }
}

/// Where nothing shines through, the window itself has round corners; where it does, the shadow takes no clicks.
void TileWindow::shape() {
    const bool isComposited = window_.isComposited();
    const RegionHandle outline =
        roundedRegion({margin(), margin(), frame_.width, frame_.height}, cornerRadius * unit());
    gtk_widget_shape_combine_region(widget(), isComposited ? nullptr : outline.get());
    gtk_widget_input_shape_combine_region(widget(), isComposited ? outline.get() : nullptr);
}

void TileWindow::compositionChanged() {
    if (output_) {
        put(*output_, frame_);
        makeParts();
        shape();
        gtk_widget_queue_draw(widget());
    }
}

void TileWindow::scaleNoticed(GParamSpec* /*property*/) {
    hands_.scaleChanged(id_);
}

void TileWindow::draw(cairo_t* cairo) {
    const double outset = margin();
    paintTile(cairo, face_, {outset, outset, frame_.width, frame_.height},
              window_.isComposited() ? Backdrop::transparent : Backdrop::opaque, isGhostly_ ? .35 : 1);
    if (hovered_ && !isDragged_ && !isWhole(*hovered_)) {
        paintHover(cairo, inWindow(parts_[*hovered_].part.frame), scheme_);
    }
    if (const auto focused = focusedPart(); focused && gtk_window_has_toplevel_focus(GTK_WINDOW(widget())) != FALSE) {
        paintFocus(cairo, inWindow(parts_[*focused].part.frame), accent_);
    }
    if (!std::exchange(isSeen_, true)) {
        hands_.seen(id_);
    }
}

gboolean TileWindow::pressed(GdkEvent* event) {
    const Point point = pointIn(widget(), event);
    if (gdk_event_triggers_context_menu(event) != FALSE) {
        hands_.menuWanted(id_, urlOf(partAt(point)), event);
        return TRUE;
    }
    guint button = 0;
    if (gdk_event_get_event_type(event) == GDK_BUTTON_PRESS && gdk_event_get_button(event, &button) != FALSE &&
        button == GDK_BUTTON_PRIMARY) {
        press_ = point;
        isDragged_ = false;
    }
    return TRUE;
}

gboolean TileWindow::moved(GdkEvent* event) {
    const Point point = pointIn(widget(), event);
    if (!press_) {
        hover(partAt(point));
        return TRUE;
    }
    const Point distance{point.x - press_->x, point.y - press_->y};
    if (!isDragged_ && std::hypot(distance.x, distance.y) < dragThreshold) {
        return TRUE;
    }
    isDragged_ = true;
    hover(std::nullopt);
    hands_.dragged(id_, distance);
    return TRUE;
}

gboolean TileWindow::released(GdkEvent* event) {
    guint button = 0;
    if (gdk_event_get_button(event, &button) == FALSE || button != GDK_BUTTON_PRIMARY || !press_) {
        return TRUE;
    }
    press_.reset();
    if (std::exchange(isDragged_, false)) {
        hands_.dragEnded(id_, true);
        return TRUE;
    }
    const Point point = pointIn(widget(), event);
    if (contains(inWindow({0, 0, face_.width / face_.scale, face_.height / face_.scale}), point)) {
        activate(partAt(point));
    }
    return TRUE;
}

gboolean TileWindow::left(GdkEvent* /*event*/) {
    hover(std::nullopt);
    return FALSE;
}

gboolean TileWindow::keyPressed(GdkEvent* event) {
    guint key = 0;
    GdkModifierType modifiers{};
    gdk_event_get_keyval(event, &key);
    gdk_event_get_state(event, &modifiers);
    const auto focused = focusedPart();
    switch (key) {
    case GDK_KEY_Return:
    case GDK_KEY_KP_Enter:
    case GDK_KEY_ISO_Enter:
    case GDK_KEY_space:
        activate(focused);
        return TRUE;
    case GDK_KEY_Escape:
        if (isDragged_) {
            press_.reset();
            isDragged_ = false;
            hands_.dragEnded(id_, false);
        } else {
            gtk_window_set_focus(GTK_WINDOW(widget()), nullptr);
        }
        return TRUE;
    case GDK_KEY_F10:
        if ((modifiers & GDK_SHIFT_MASK) == 0) {
            return FALSE;
        }
        [[fallthrough]];
    case GDK_KEY_Menu:
        hands_.menuWanted(id_, urlOf(focused), event);
        return TRUE;
    default:
        return FALSE;
    }
}

gboolean TileWindow::focusChanged(GdkEvent* /*event*/) const {
    gtk_widget_queue_draw(widget());
    return FALSE;
}

void TileWindow::focusMoved(GtkWidget* /*focused*/) const {
    gtk_widget_queue_draw(widget());
}

/// Assistive technology has pressed it.
void TileWindow::clicked(GtkButton* button, gpointer self) {
    auto& tile = *static_cast<TileWindow*>(self);
    const auto found = std::find(tile.widgets_.begin(), tile.widgets_.end(), GTK_WIDGET(button));
    tile.activate(static_cast<std::size_t>(found - tile.widgets_.begin()));
}

double TileWindow::margin() const {
    return window_.isComposited() ? shadowMargin : 0;
}

bool TileWindow::isWhole(std::size_t part) const {
    return parts_[part].part.frame.width * face_.scale >= face_.width;
}

Rect TileWindow::inWindow(const Rect& points) const {
    const double outset = margin();
    const double scale = unit();
    return {outset + points.x * scale, outset + points.y * scale, points.width * scale, points.height * scale};
}

/// The smallest link there: links may lie in each other.
std::optional<std::size_t> TileWindow::partAt(Point point) const {
    std::optional<std::size_t> best;
    const auto area = [&](std::size_t index) {
        return parts_[index].part.frame.width * parts_[index].part.frame.height;
    };
    for (std::size_t index = 0; index < parts_.size(); ++index) {
        if (parts_[index].act != TilePart::Act::nothing && contains(inWindow(parts_[index].part.frame), point) &&
            (!best || area(index) < area(*best))) {
            best = index;
        }
    }
    return best;
}

std::optional<std::size_t> TileWindow::focusedPart() const {
    GtkWidget* focused = gtk_window_get_focus(GTK_WINDOW(widget()));
    const auto found = std::find(widgets_.begin(), widgets_.end(), focused);
    return focused == nullptr || found == widgets_.end()
               ? std::nullopt
               : std::optional(static_cast<std::size_t>(found - widgets_.begin()));
}

std::optional<std::string> TileWindow::urlOf(std::optional<std::size_t> part) const {
    return part && parts_[*part].act == TilePart::Act::open ? parts_[*part].part.url : face_.widgetURL;
}

void TileWindow::hover(std::optional<std::size_t> part) {
    if (part == hovered_) {
        return;
    }
    hovered_ = part;
    GdkWindow* window = gtk_widget_get_window(widget());
    const ObjectHandle<GdkCursor> hand(part ? gdk_cursor_new_from_name(gdk_window_get_display(window), "pointer")
                                            : nullptr);
    gdk_window_set_cursor(window, hand.get());
    gtk_widget_queue_draw(widget());
}

void TileWindow::activate(std::optional<std::size_t> part) {
    if (part) {
        hands_.activated(id_, TilePart(parts_[*part]));
    } else if (face_.widgetURL) {
        LayoutPart whole;
        whole.role = LayoutPart::Role::link;
        whole.url = *face_.widgetURL;
        hands_.activated(id_, {whole, TilePart::Act::open});
    }
}

} // namespace host
