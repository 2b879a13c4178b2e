// The host's desktop: a window for every placed widget, where the user left it.
//
// It shows what the session has and turns what hands do into changes of the arrangement, which come back to it like
// everybody else's. One thread, the main loop's.
#pragma once

#include "Host/Desktop/Catalog.h"
#include "Host/Desktop/DesktopSettings.h"
#include "Host/Desktop/DesktopTile.h"
#include "Host/Desktop/Outputs.h"
#include "Host/Desktop/Studio.h"
#include "Host/Desktop/TileDrag.h"
#include "Host/Session/HostApplication.h"

#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>

namespace host {

class GalleryWindow;
class EditorWindow;

class Desktop final : public HostDisplay, private TileHands {
  public:
    struct Options {
        Catalog::ReadManifests readManifests;
        /// The home that extensions read in.
        std::filesystem::path home;
        Presence presence = Presence::foreground;
    };
    /// Connects to the display of the environment. The error is one clear line.
    static platform::Expected<std::unique_ptr<Desktop>, std::string> open(Options options);
    ~Desktop() override;

    /// After the host has ended: a home with examples, which the user wants to see instead.
    const std::optional<std::filesystem::path>& examplesWanted() const { return examplesWanted_; }

    void started(HostApplication& host) override;
    void arrangementChanged(const Arrangement& arrangement) override;
    void findPlace(Instance& instance) override;
    bool activate() override;
    void shutDown() override;
    void tileUpdated(const Tile& tile, TileUpdate update) override;

  private:
    explicit Desktop(Options options);

    void activated(InstanceId id, const TilePart& part) override;
    void menuWanted(InstanceId id, const std::optional<std::string>& url, const GdkEvent* event) override;
    void dragged(InstanceId id, Point distance) override;
    void dragEnded(InstanceId id, bool dropped) override;
    void seen(InstanceId id) override;
    void scaleChanged(InstanceId id) override;

    void lookAround();
    void place();
    std::vector<TileToPlace> tilesToPlace() const;
    void keepPlaces();
    Move moveTo(InstanceId id, std::size_t screen, const Rect& frame) const;
    void moveTile(const Move& move, std::function<void(const HostApplication::Change& result)> done);
    void restyle();
    void askForPlaceholder(const Instance& instance);
    void remove(InstanceId id);
    void restore(InstanceId id);
    void showGallery();
    void showExamples();
    void edit(InstanceId id);
    void change(const ArrangementChange& change);
    void showUnsaved(const platform::Failure& error);
    const Tile* sessionTile(InstanceId id) const;
    DesktopTile* shownTile(InstanceId id);

    HostApplication* host_ = nullptr;
    std::filesystem::path home_;
    Presence presence_;
    std::optional<std::filesystem::path> examplesWanted_;
    Studio studio_;
    EntryStore entries_;
    Catalog catalog_;
    DesktopSettings settings_;
    Outputs outputs_;
    TileSurroundings around_;
    Arrangement arrangement_;
    std::map<InstanceId, std::unique_ptr<DesktopTile>> tiles_;
    /// Those that the user removes, until that is written.
    std::set<InstanceId> removing_;
    /// Removed tiles as long as that can be taken back.
    std::map<InstanceId, std::unique_ptr<DesktopTile>> removed_;
    /// Those that are still to be written, in their order: tiles lie there already.
    std::vector<Move> moves_;
    std::vector<PlacedTile> places_;
    std::optional<TileDrag> drag_;
    InstanceId draggedId_ = 0;
    std::unique_ptr<GalleryWindow> gallery_;
    std::map<InstanceId, std::unique_ptr<EditorWindow>> editors_;
    LaterCall keepingPlaces_;
    LaterCall firstSight_;
    LaterCall readingTheme_;
};

} // namespace host
