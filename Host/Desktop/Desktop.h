// The desktop: a window for every placed widget, where the user left it.
//
// Shows the session's entries. Makes arrangement changes of the user's input; they come back like those of commands.
// Called on the main thread.
#pragma once

#include "Host/Desktop/Catalog.h"
#include "Host/Desktop/DesktopSettings.h"
#include "Host/Desktop/Outputs.h"
#include "Host/Desktop/RendererCache.h"
#include "Host/Desktop/TileController.h"
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

class Desktop final : public HostDisplay, private TileDelegate {
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

    /// Returns the home to start again with after the host has ended: the examples' or the user's own.
    const std::optional<std::filesystem::path>& homeWanted() const { return homeWanted_; }

    void started(HostApplication& host) override;
    void arrangementChanged(const Arrangement& arrangement) override;
    void findPlace(Instance& instance) override;
    bool activate() override;
    void shutDown() override;
    void tileUpdated(const Tile& updated, TileUpdate update) override;

  private:
    explicit Desktop(Options options);

    void menuRequested(InstanceId id, const std::optional<std::string>& url, const GdkEvent* event) override;
    void dragged(InstanceId id, Point distance) override;
    void dragEnded(InstanceId id, DragEnd end) override;
    void undoRequested(InstanceId id) override;
    void keyPressed() override;

    void showGalleryIfEmpty();
    void place();
    std::vector<TileToPlace> tilesToPlace() const;
    void savePlacements();
    Move moveTo(InstanceId id, std::size_t screen, const Rect& frame) const;
    void moveTile(const Move& move, std::function<void(const HostApplication::Change& result)> done);
    void restyle();
    void askForPlaceholder(const Instance& instance);
    void remove(InstanceId id);
    void showGallery();
    void showExamples();
    void edit(InstanceId id);
    void add(const Instance& instance, std::function<void(InstanceId id)> added);
    void change(const ArrangementChange& change);
    void showUnsaved(const platform::Failure& error);
    TileController* tile(InstanceId id);

    HostApplication* host_ = nullptr;
    std::filesystem::path home_;
    Presence presence_;
    std::optional<std::filesystem::path> homeWanted_;
    RendererCache renderers_;
    EntryStore entries_;
    Catalog catalog_;
    DesktopSettings settings_;
    Outputs outputs_;
    /// Set once the host has started.
    std::optional<TileContext> context_;
    Arrangement arrangement_;
    std::map<InstanceId, std::unique_ptr<TileController>> tiles_;
    /// The tiles whose removal is not written yet.
    std::set<InstanceId> removing_;
    /// Removed tiles, as long as the removal can be undone.
    std::map<InstanceId, std::unique_ptr<TileController>> removed_;
    /// Moves that are shown but not written yet, in their order.
    std::vector<Move> moves_;
    std::vector<PlacedTile> places_;
    std::optional<TileDrag> drag_;
    InstanceId draggedId_ = 0;
    std::unique_ptr<GalleryWindow> gallery_;
    std::map<InstanceId, std::unique_ptr<EditorWindow>> editors_;
    ScheduledCall savingPlacements_;
    ScheduledCall startupIdle_;
    ScheduledCall readingTheme_;
};

} // namespace host
