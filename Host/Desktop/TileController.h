// One placed widget on the desktop: its window, and what it shows now.
//
// It always shows something: until the extension has answered the last entry from disk, or a placeholder; then the
// session's entry. Badges on the tile say that it could not be updated, and how old an outdated picture is.
#pragma once

#include "Host/Arrangement/Arrangement.h"
#include "Host/Desktop/Catalog.h"
#include "Host/Desktop/DesktopSettings.h"
#include "Host/Desktop/RendererCache.h"
#include "Host/Desktop/TileWindow.h"
#include "Host/Drawing/RenderedTile.h"
#include "Host/Session/EntryStore.h"
#include "Host/Session/HostApplication.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace host {

/// What a tile's user does that concerns more than the tile.
class TileDelegate {
  public:
    virtual ~TileDelegate() = default;
    /// `url` is that of the link under the pointer or with the focus, else the tile's own.
    virtual void menuRequested(InstanceId id, const std::optional<std::string>& url, const GdkEvent* event) = 0;
    /// `distance` is from where the drag began.
    virtual void dragged(InstanceId id, Point distance) = 0;
    virtual void dragEnded(InstanceId id, DragEnd end) = 0;
    virtual void undoRequested(InstanceId id) = 0;
    virtual void keyPressed() = 0;
};

/// What the tiles of a desktop share.
struct TileContext {
    HostApplication& host;
    RendererCache& renderers;
    const EntryStore& entries;
    const DesktopSettings& settings;
    const Catalog& catalog;
    TileDelegate& delegate;
    Stacking& stacking;
};

class TileController {
  public:
    /// `context` must outlive this.
    TileController(Instance instance, const std::string& renderingMode, const TileContext& context);

    const Instance& instance() const { return instance_; }
    /// Where it lies on the desktop of all screens.
    const Rect& frame() const { return frame_; }
    TileWindow& window() { return window_; }

    void put(const Output& output, const Rect& frame);
    /// Called when there is no screen.
    void hide();

    /// Takes over what the arrangement says now.
    void change(const Instance& instance, const std::string& renderingMode);

    /// Shows the extension's placeholder as long as there is nothing better.
    void showPlaceholder(const platform::View& view);
    bool isWaiting() const { return shown_ == Shown::nothing; }

    /// Brings the picture and its badges up to what the session has.
    void updated(TileUpdate update);
    /// Follows the look of the desktop and the scale of the screen.
    void restyle();

    /// Shows in the tile's place that it was removed, with a button to undo that; then calls `done`.
    void showRemoved(std::function<void()> done);

    /// Writes what is not written yet.
    void saveState();

  private:
    enum class Shown { nothing, stored, entry };
    /// What is drawn over a picture.
    struct Badges {
        /// From when an outdated picture is, in words; else empty.
        std::string asOf;
        bool hasFailed = false;
        bool operator==(const Badges&) const = default;
    };
    struct Message {
        std::string title;
        std::vector<std::string> texts;
        /// May be empty.
        std::string button;
        guint milliseconds = 0;
    };

    void activated(const TilePart& part);
    void firstDrawn();
    void showEntry();
    void showMessage(const Message& message, std::function<void()> done = nullptr);
    void messageEnded();
    void explain();
    void paint();
    /// Paints before the toolkit draws, once for several reasons.
    void paintSoon();
    RenderedTile render(const platform::View& view, Redaction redaction);
    /// Draws the badges on the picture and shows it.
    void present(RenderedTile rendered);
    TilePart drawBadges(RenderedTile& rendered);
    void save();
    Badges badges() const;
    TileStyle style(Redaction redaction) const;
    std::string name() const;
    void waitedLong() { updated(TileUpdate::status); }
    const Tile* tile() const { return context_.host.session().tile(instance_.id); }

    const TileContext& context_;
    Instance instance_;
    std::string renderingMode_;
    TileWindow window_;
    Rect frame_;
    Output output_;
    Shown shown_ = Shown::nothing;
    /// From disk, until there is something newer.
    std::optional<StoredEntry> stored_;
    Badges badges_;
    /// When the entry came, and until when it counts as new.
    platform::Date made_;
    platform::Date reload_;
    /// Whether the session's entry is on the disk, or on its way there.
    bool isSaved_ = true;
    bool needsRepaint_ = false;
    bool isOffscreen_ = false;
    bool showsMessage_ = false;
    ScheduledCall messageEnding_;
    std::function<void()> afterMessage_;
    ScheduledCall waiting_;
    ScheduledCall painting_;
    ScheduledCall saving_;
};

} // namespace host
