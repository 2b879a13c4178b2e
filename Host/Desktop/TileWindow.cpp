#include "Host/Desktop/TileWindow.h"

#include "Host/Desktop/Toolkit.h"
#include "Host/Layout/Measures.h"

#include <algorithm>
#include <cmath>

namespace host {
namespace {

void setCursor(GdkWindow* window, const char* name) {
    readCursorTheme();
    const ObjectHandle<GdkCursor> cursor(gdk_cursor_new_from_name(gdk_window_get_display(window), name));
    gdk_window_set_cursor(window, cursor.get());
}

gboolean tileEntered(GtkWidget* window) {
    setCursor(gtk_widget_get_window(window), "default");
    return FALSE;
}

gboolean linkEntered(GtkWidget* button) {
    setCursor(gtk_button_get_event_window(GTK_BUTTON(button)), "pointer");
    return FALSE;
}

GtkWidget* makePart(const AccessibleItem& part) {
    const bool isLink = part.role == AccessibleItem::Role::link;
    GtkWidget* widget = isLink ? gtk_button_new() : gtk_drawing_area_new();
    if (isLink) {
        // The picture shows the link.
        gtk_style_context_add_class(gtk_widget_get_style_context(widget), "tile-part");
        gtk_widget_set_focus_on_click(widget, FALSE);
        // For the window's gesture.
        gtk_widget_add_events(widget, GDK_BUTTON_MOTION_MASK);
        g_signal_connect(widget, "enter-notify-event", G_CALLBACK(&linkEntered), nullptr);
    } else {
        gtk_widget_set_has_window(widget, FALSE);
    }
    AtkObject* accessible = gtk_widget_get_accessible(widget);
    atk_object_set_name(accessible, part.name.c_str());
    atk_object_set_description(accessible, part.description.c_str());
    switch (part.role) {
    case AccessibleItem::Role::heading:
        atk_object_set_role(accessible, ATK_ROLE_HEADING);
        break;
    case AccessibleItem::Role::text:
        atk_object_set_role(accessible, ATK_ROLE_LABEL);
        break;
    case AccessibleItem::Role::link:
        atk_object_set_role(accessible, ATK_ROLE_LINK);
        break;
    }
    return widget;
}

} // namespace

std::vector<TilePart> tileParts(const RenderedTile& rendered, const std::string& name) {
    std::vector<TilePart> parts;
    if (rendered.widgetURL) {
        parts.push_back({.item = {.role = AccessibleItem::Role::link,
                                  .frame = {0, 0, rendered.picture.width / rendered.scale,
                                            rendered.picture.height / rendered.scale},
                                  .name = name,
                                  .description = {},
                                  .url = *rendered.widgetURL},
                         .action = TilePart::Action::open});
    }
    for (const AccessibleItem& part : rendered.items) {
        const bool isLink = part.role == AccessibleItem::Role::link;
        parts.push_back({part, isLink ? TilePart::Action::open : TilePart::Action::none});
    }
    return parts;
}

TileWindow::TileWindow(Handlers handlers, Stacking& stacking)
    : handlers_(std::move(handlers)), window_(DesktopWindow::Level::desktop, DesktopWindow::Input::all, stacking,
                                              [this](cairo_t* cairo) { draw(cairo); }),
      fixed_(gtk_fixed_new()), drag_(gtk_gesture_drag_new(widget())) {
    gtk_container_add(GTK_CONTAINER(widget()), fixed_);
    gtk_widget_show(fixed_);
    gtk_widget_add_events(widget(), GDK_BUTTON_PRESS_MASK | GDK_BUTTON_RELEASE_MASK | GDK_BUTTON_MOTION_MASK);
    gtk_event_controller_set_propagation_phase(GTK_EVENT_CONTROLLER(drag_.get()), GTK_PHASE_CAPTURE);
    connect<&TileWindow::dragBegun>(drag_.get(), "drag-begin", this);
    connect<&TileWindow::dragMoved>(drag_.get(), "drag-update", this);
    connect<&TileWindow::dragFinished>(drag_.get(), "drag-end", this);
    connect<&TileWindow::dragCancelled>(drag_.get(), "cancel", this);
    g_signal_connect(widget(), "enter-notify-event", G_CALLBACK(&tileEntered), nullptr);
    connect<&TileWindow::pressed>(widget(), "button-press-event", this);
    connect<&TileWindow::keyPressed>(widget(), "key-press-event", this);
    g_signal_connect_after(widget(), "set-focus", G_CALLBACK(&gtk_widget_queue_draw), nullptr);
    g_signal_connect(widget(), "notify::has-toplevel-focus", G_CALLBACK(&gtk_widget_queue_draw), nullptr);
    g_signal_connect(widget(), "notify::focus-visible", G_CALLBACK(&gtk_widget_queue_draw), nullptr);
    connect<&TileWindow::onScaleChanged>(widget(), "notify::scale-factor", this);
    connect<&TileWindow::shape>(widget(), "map", this);
}

TileWindow::~TileWindow() {
    g_signal_handlers_disconnect_by_data(drag_.get(), this);
    g_signal_handlers_disconnect_by_data(widget(), this);
}

void TileWindow::put(const Output& output, const Rect& frame) {
    const bool hadShadow = std::exchange(outset_, window_.isBlended() ? shadowMargin : 0) > 0;
    const bool isResized =
        frame.width != frame_.width || frame.height != frame_.height || hadShadow != window_.isBlended();
    frame_ = frame;
    window_.put(output, {frame.x - outset_, frame.y - outset_, frame.width + 2 * outset_, frame.height + 2 * outset_});
    applyParts();
    if (isResized) {
        makeParts();
        gtk_widget_queue_draw(widget());
    }
}

void TileWindow::show(RenderedTile rendered, std::vector<TilePart> parts, const std::string& name) {
    const std::vector<TilePart>& last = nextParts_ ? *nextParts_ : parts_;
    const bool hasOtherParts = parts != last;
    rendered_ = std::move(rendered);
    gtk_window_set_title(GTK_WINDOW(widget()), name.c_str());
    if (hasOtherParts) {
        nextParts_ = std::move(parts);
        applyParts();
    }
    gtk_widget_queue_draw(widget());
}

void TileWindow::setDimmed(bool isDimmed) {
    isDimmed_ = isDimmed;
    gtk_widget_queue_draw(widget());
}

/// Waits until the tile is placed and no mouse button is down, since a pressed part must see the release.
void TileWindow::applyParts() {
    if (nextParts_ && frame_.width > 0 && gtk_gesture_is_active(drag_.get()) == FALSE) {
        parts_ = *std::exchange(nextParts_, std::nullopt);
        makeParts();
    }
}

void TileWindow::makeParts() {
    const auto focused = focusedPart();
    gtk_window_set_focus(GTK_WINDOW(widget()), nullptr);
    for (GtkWidget* each : widgets_) {
        gtk_widget_destroy(each);
    }
    widgets_.clear();
    for (const TilePart& part : parts_) {
        GtkWidget* each = makePart(part.item);
        const Rect frame = inWindow(part.item.frame);
        gtk_widget_set_size_request(each, std::max(1, static_cast<int>(frame.width)),
                                    std::max(1, static_cast<int>(frame.height)));
        gtk_fixed_put(GTK_FIXED(fixed_), each, static_cast<int>(frame.x), static_cast<int>(frame.y));
        if (GTK_IS_BUTTON(each) != FALSE) {
            g_signal_connect(each, "clicked", G_CALLBACK(&TileWindow::clicked), this);
            g_signal_connect_swapped(each, "state-flags-changed", G_CALLBACK(&gtk_widget_queue_draw), widget());
        }
        gtk_widget_show(each);
        widgets_.push_back(each);
    }
    // The focus stays on the same row when the list changes.
    if (focused && *focused < widgets_.size()) {
        gtk_widget_grab_focus(widgets_[*focused]);
    }
    shape();
}

/// Gives an opaque window round corners, and lets clicks through a translucent one's shadow. GTK resets this whenever a
/// part is realized.
void TileWindow::shape() {
    const bool isBlended = window_.isBlended();
    RegionHandle outline = roundedRegion({outset_, outset_, frame_.width, frame_.height}, cornerRadius * unit());
    gtk_widget_shape_combine_region(widget(), isBlended ? nullptr : outline.get());
    gtk_widget_input_shape_combine_region(widget(), isBlended ? outline.get() : nullptr);
    window_.blurBehind(std::move(outline));
}

void TileWindow::draw(cairo_t* cairo) {
    paintTile(cairo, rendered_, {outset_, outset_, frame_.width, frame_.height},
              window_.isBlended() ? Backdrop::transparent : Backdrop::opaque, isDimmed_ ? .35 : 1);
    const Palette palette(rendered_.appearance);
    GtkWindow* const window = GTK_WINDOW(widget());
    if (const auto pressed = partWith(GTK_STATE_FLAG_ACTIVE); pressed && !isDragged_) {
        // A lighter one for a large area.
        fillMark(cairo, markOf(*pressed),
                 palette.highlight(isWhole(*pressed) ? Palette::Highlight::hovered : Palette::Highlight::pressed));
    } else if (const auto hovered = partWith(GTK_STATE_FLAG_PRELIGHT); hovered && !isDragged_ && !isWhole(*hovered)) {
        fillMark(cairo, markOf(*hovered), palette.highlight(Palette::Highlight::hovered));
    }
    if (const auto focused = focusedPart();
        focused && gtk_window_has_toplevel_focus(window) != FALSE && gtk_window_get_focus_visible(window) != FALSE) {
        strokeMark(cairo, markOf(*focused), palette.focusRing());
    }
    if (!std::exchange(isDrawn_, true)) {
        handlers_.firstDrawn();
    }
}

gboolean TileWindow::pressed(GdkEvent* event) {
    if (gdk_event_triggers_context_menu(event) != FALSE) {
        handlers_.menuRequested(urlOf(partOf(gtk_get_event_widget(event))), event);
        return TRUE;
    }
    return FALSE;
}

void TileWindow::dragBegun() {
    gtk_window_set_focus_visible(GTK_WINDOW(widget()), FALSE);
    window_.takeKeyboard(gtk_get_current_event_time());
}

void TileWindow::dragMoved(double x, double y) {
    if (!isDragged_ && gtk_drag_check_threshold(widget(), 0, 0, static_cast<int>(x), static_cast<int>(y)) == FALSE) {
        return;
    }
    if (!std::exchange(isDragged_, true)) {
        // The press is no click any more.
        gtk_gesture_set_state(drag_.get(), GTK_EVENT_SEQUENCE_CLAIMED);
    }
    handlers_.dragged({x, y});
}

void TileWindow::dragFinished() {
    applyingParts_.idle<&TileWindow::applyParts>(this);
    if (std::exchange(isDragged_, false)) {
        handlers_.dragEnded(DragEnd::dropped);
    }
}

void TileWindow::dragCancelled() {
    if (std::exchange(isDragged_, false)) {
        handlers_.dragEnded(DragEnd::cancelled);
    }
}

gboolean TileWindow::keyPressed(GdkEvent* event) {
    guint key = 0;
    GdkModifierType modifiers{};
    gtk_window_set_focus_visible(GTK_WINDOW(widget()), TRUE);
    handlers_.keyPressed();
    gdk_event_get_keyval(event, &key);
    gdk_event_get_state(event, &modifiers);
    switch (key) {
    case GDK_KEY_Escape:
        if (isDragged_) {
            gtk_event_controller_reset(GTK_EVENT_CONTROLLER(drag_.get()));
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
        handlers_.menuRequested(urlOf(focusedPart()), event);
        return TRUE;
    default:
        return FALSE;
    }
}

void TileWindow::clicked(GtkButton* button, gpointer self) {
    auto& tile = *static_cast<TileWindow*>(self);
    // May destroy the part.
    const TilePart part = tile.parts_[*tile.partOf(GTK_WIDGET(button))];
    tile.handlers_.activated(part);
}

bool TileWindow::isWhole(std::size_t part) const {
    return parts_[part].item.frame.width * rendered_.scale >= rendered_.picture.width;
}

Rect TileWindow::inWindow(const Rect& points) const {
    const double scale = unit();
    return {outset_ + points.x * scale, outset_ + points.y * scale, points.width * scale, points.height * scale};
}

std::optional<std::size_t> TileWindow::partOf(const GtkWidget* widget) const {
    const auto found = std::find(widgets_.begin(), widgets_.end(), widget);
    return found == widgets_.end() ? std::nullopt : std::optional(static_cast<std::size_t>(found - widgets_.begin()));
}

std::optional<std::size_t> TileWindow::focusedPart() const {
    return partOf(gtk_window_get_focus(GTK_WINDOW(widget())));
}

std::optional<std::size_t> TileWindow::partWith(GtkStateFlags state) const {
    const auto found = std::find_if(widgets_.begin(), widgets_.end(), [state](GtkWidget* each) {
        return GTK_IS_BUTTON(each) != FALSE && (gtk_widget_get_state_flags(each) & state) != 0;
    });
    return found == widgets_.end() ? std::nullopt : partOf(*found);
}

Mark TileWindow::markOf(std::size_t part) const {
    return {.frame = inWindow(parts_[part].item.frame), .cornerRadius = isWhole(part) ? cornerRadius * unit() : 0};
}

std::optional<std::string> TileWindow::urlOf(std::optional<std::size_t> part) const {
    return part && parts_[*part].action == TilePart::Action::open ? parts_[*part].item.url : rendered_.widgetURL;
}

} // namespace host
