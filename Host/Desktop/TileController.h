// A placed widget on the desktop: its window and its content.
//
// Until the extension has answered, it shows the last entry from disk or a placeholder; then the session's entry. Badges
// on the tile say that it could not be updated, and how old an outdated picture is.
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

/// Receives a tile's input that concerns more than the tile.
class TileDelegate {
  public:
    virtual ~TileDelegate() = default;
    /// `url` is that of the link under the pointer or with the focus, else the tile's own.
    virtual void menuRequested(InstanceId id, const std::optional<std::string>& url, const GdkEvent* event) = 0;
    /// `distance` is from the drag's start.
    virtual void dragged(InstanceId id, Point distance) = 0;
    virtual void dragEnded(InstanceId id, DragEnd end) = 0;
    virtual void undoRequested(InstanceId id) = 0;
    virtual void keyPressed() = 0;
};

/// The objects that all tiles of a desktop use.
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
    /// Requires that `context` outlives this.
    TileController(Instance instance, const std::string& renderingMode, const TileContext& context);

    const Instance& instance() const { return instance_; }
    /// Returns the tile's frame on the desktop of all screens.
    const Rect& frame() const { return frame_; }
    TileWindow& window() { return window_; }

    void put(const Output& output, const Rect& frame);
    /// Called when there is no screen.
    void hide();

    /// Applies the arrangement's current values.
    void change(const Instance& instance, const std::string& renderingMode);

    /// Shows the extension's placeholder if there is no entry.
    void showPlaceholder(const platform::View& view);
    bool isWaiting() const { return shown_ == Shown::nothing; }

    /// Updates the picture and its badges from the session.
    void updated(TileUpdate update);
    /// Draws the tile again, in the desktop's current look and the screen's current scale.
    void restyle();

    /// Shows that the tile was removed, with a button to undo that. Calls `done` when the message ends.
    void showRemoved(std::function<void()> done);

    /// Writes the entry if it is not written yet.
    void saveState();

  private:
    enum class Shown { nothing, stored, entry };
    /// Drawn over the picture.
    struct Badges {
        /// How old an outdated picture is, in words; empty for a current one.
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
    /// Schedules one painting before GTK draws.
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
    /// The entry from disk, until there is a newer one.
    std::optional<StoredEntry> stored_;
    Badges badges_;
    /// When the entry was made, and until when it is current.
    platform::Date made_;
    platform::Date reload_;
    /// Whether the session's entry is written or being written.
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
