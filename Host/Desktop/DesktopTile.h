// One placed widget on the desktop: its window, and what is to be seen there now.
//
// There always is something: the last entry from disk, or a placeholder, until the extension has answered; then its
// entry. A tile that could not be brought up to date bears a mark that explains itself, and says from when it is.
#pragma once

#include "Host/Arrangement/Arrangement.h"
#include "Host/Desktop/Catalog.h"
#include "Host/Desktop/DesktopSettings.h"
#include "Host/Desktop/Studio.h"
#include "Host/Desktop/TileWindow.h"
#include "Host/Drawing/RenderedTile.h"
#include "Host/Session/EntryStore.h"
#include "Host/Session/Session.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace host {

/// What the tiles of a desktop share.
struct TileSurroundings {
    Studio& studio;
    const EntryStore& entries;
    const DesktopSettings& settings;
    const Catalog& catalog;
    const platform::Clock& clock;
    TileHands& hands;
    Stacking& stacking;
    /// The tile as the session has it; null where it does not know it (any more).
    std::function<const Tile*(InstanceId id)> tile;
    /// Does what waits for the disk, beside the main loop.
    std::function<void(std::function<void()> work)> workLater;
};

class DesktopTile {
  public:
    /// `around` must outlive this.
    DesktopTile(Instance instance, const std::string& renderingMode, const TileSurroundings& around);

    const Instance& instance() const { return instance_; }
    /// In the window's units.
    Size size() const;
    const Rect& frame() const { return frame_; }
    TileWindow& window() { return window_; }
    const RenderedTile& rendered() const { return window_.rendered(); }

    void put(const Output& output, const Rect& frame);
    /// Its screen is away, and so is every other.
    void hide();

    /// The arrangement says something else of it now.
    void change(const Instance& instance, const std::string& renderingMode);

    /// The placeholder that the extension has for it, as long as there is nothing better.
    void showPlaceholder(const platform::View& view);
    bool isWaiting() const { return shown_ == Shown::waiting; }

    /// Brings the picture and its marks up to what the session has.
    void updated(TileUpdate update);
    /// The tile has come to the screen.
    void seen();
    /// The look of the desktop or the scale of the screen is another.
    void restyle();

    /// A message in the tile's place for some time; then, what was there. `button` may be empty.
    struct Message {
        std::string title;
        std::vector<std::string> texts;
        std::string button;
    };
    void say(const Message& message, guint milliseconds, std::function<void()> then);
    /// Says why the tile could not be brought up to date.
    void explain();

    /// Writes down what is not written yet.
    void keep();

  private:
    enum class Shown { waiting, stored, entry };
    /// What is laid over a picture.
    struct Marks {
        /// From when what is shown is, in words; empty where that is of no interest.
        std::string asOf;
        bool hasFailed = false;
        bool operator==(const Marks&) const = default;
    };

    /// Draws what is to be seen and shows it; soon, for several reasons at once.
    void paint();
    void paintSoon();
    RenderedTile renderEntry(const Entry& entry);
    RenderedTile renderWaiting();
    /// Lays the marks over the picture and shows it.
    void present(RenderedTile rendered);
    TilePart drawMarks(RenderedTile& rendered);
    void save();
    Marks marks() const;
    TileStyle style(Redaction redaction) const;
    std::string name() const;
    void mark();
    void messageEnded();
    void show();
    void waitedLong() { updated(TileUpdate::status); }

    const TileSurroundings& around_;
    Instance instance_;
    std::string renderingMode_;
    TileWindow window_;
    Rect frame_;
    Output output_;
    Shown shown_ = Shown::waiting;
    /// From disk, as long as there is nothing newer.
    std::optional<StoredEntry> stored_;
    Marks marks_;
    /// When the entry came, and until when it counts as new.
    platform::Date made_;
    platform::Date reload_;
    /// What the session has is on the disk, or on its way there.
    bool isKept_ = true;
    /// There is something newer to be seen than what is there.
    bool isBehind_ = false;
    bool isAway_ = false;
    bool isSaying_ = false;
    LaterCall messageEnding_;
    std::function<void()> afterMessage_;
    LaterCall waiting_;
    LaterCall painting_;
    LaterCall saving_;
};

} // namespace host
