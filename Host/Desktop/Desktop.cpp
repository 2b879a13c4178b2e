#include "Host/Desktop/Desktop.h"

#include "Host/Connection/Requests.h"
#include "Host/Connection/UserFolders.h"
#include "Host/Desktop/EditorWindow.h"
#include "Host/Desktop/Examples.h"
#include "Host/Desktop/GalleryWindow.h"
#include "Host/Desktop/TileMenu.h"
#include "Host/Desktop/Toolkit.h"
#include "Platform/Foundation/FileSystem.h"
#include "Platform/Foundation/Localization.h"

#include <algorithm>

namespace host {

using platform::Expected;
using platform::localized;
using platform::Unexpected;

Expected<std::unique_ptr<Desktop>, std::string> Desktop::open(Options options) {
    if (const auto failure = startToolkit()) {
        return Unexpected{*failure};
    }
    return std::unique_ptr<Desktop>(new Desktop(std::move(options)));
}

Desktop::Desktop(Options options)
    : home_(std::move(options.home)), presence_(options.presence),
      entries_(platform::DiskFileSystem::shared(), tileFolder()), catalog_(std::move(options.readManifests)),
      settings_([this] { restyle(); }), outputs_([this] { place(); }) {}

Desktop::~Desktop() = default;

void Desktop::started(HostApplication& host) {
    host_ = &host;
    context_.emplace(TileContext{.host = host,
                                 .renderers = renderers_,
                                 .entries = entries_,
                                 .settings = settings_,
                                 .catalog = catalog_,
                                 .delegate = *this,
                                 .stacking = outputs_.stacking()});
    if (presence_ == Presence::foreground) {
        startupIdle_.idle<&Desktop::showGalleryIfEmpty>(this);
    }
}

/// Shows the gallery on a desktop without widgets, or the examples if there is no library.
void Desktop::showGalleryIfEmpty() {
    if (!tiles_.empty()) {
        return;
    }
    if (!catalog_.missingFolders(home_).empty() && examplesFolder()) {
        showExamples();
    } else {
        showGallery();
    }
}

void Desktop::arrangementChanged(const Arrangement& arrangement) {
    arrangement_ = arrangement;
    for (const Move& move : moves_) {
        // The tile may have been removed meanwhile.
        if (auto moved = applied(arrangement_, move)) {
            arrangement_ = *std::move(moved);
        }
    }
    std::map<InstanceId, std::unique_ptr<TileController>> kept;
    std::set<std::string> unknown;
    std::set<InstanceId> ids;
    const bool isFirst = tiles_.empty();
    for (const Instance& instance : arrangement_.instances) {
        ids.insert(instance.id);
        removed_.erase(instance.id);
        auto known = tiles_.extract(instance.id);
        if (known) {
            known.mapped()->change(instance, arrangement.renderingMode);
            kept.insert(std::move(known));
            continue;
        }
        const auto& tile =
            *kept.emplace(instance.id, std::make_unique<TileController>(instance, arrangement.renderingMode, *context_))
                 .first->second;
        if (catalog_.widget(tile.instance().extension, tile.instance().kind) == nullptr) {
            unknown.insert(instance.extension);
        }
    }
    if (drag_ && !kept.contains(draggedId_)) {
        drag_.reset();
    }
    // Those that are kept have left it.
    const bool isRemoved = !tiles_.empty();
    for (auto& [id, tile] : std::exchange(tiles_, std::move(kept))) {
        if (removing_.contains(id)) {
            tile->showRemoved([this, id = id] { removed_.erase(id); });
            removed_.emplace(id, std::move(tile));
        }
    }
    std::erase_if(editors_, [&](const auto& editor) { return !ids.contains(editor.first); });
    for (const auto& [id, tile] : removed_) {
        ids.insert(id);
    }
    if (valueNamed<DrawingMode>(arrangement_.renderingMode, drawingModeNames) == DrawingMode::tinted) {
        readingTheme_.idle<&DesktopSettings::readTheme>(&settings_);
    }
    if (isFirst || isRemoved) {
        host_->workLater([entries = entries_, ids = std::move(ids)] { entries.keepOnly(ids); });
    }
    place();
    for (const auto& [id, tile] : tiles_) {
        if (tile->isWaiting() && host_->session().tile(id) == nullptr) {
            askForPlaceholder(tile->instance());
        }
    }
    for (const std::string& extension : unknown) {
        catalog_.describe(*host_, extension, [](const auto& /*widgets*/) {});
    }
}

void Desktop::findPlace(Instance& instance) {
    auto tiles = tilesToPlace();
    tiles.push_back({&instance, settings_.tileSize(instance.family)});
    const auto places = placeTiles(tiles, outputs_.screens());
    if (!places.empty() && places.back().source == PlacedTile::Source::chosen) {
        const Move there = moveTo(instance.id, places.back().screen, places.back().frame);
        instance.position = there.position;
        instance.output = there.output;
    }
}

bool Desktop::activate() {
    showGallery();
    return true;
}

void Desktop::shutDown() {
    for (const auto& [id, tile] : tiles_) {
        tile->saveState();
    }
}

void Desktop::tileUpdated(const Tile& updated, TileUpdate update) {
    if (TileController* shown = tile(updated.instance().id); shown != nullptr) {
        shown->updated(update);
    }
}

/// Places all tiles on the current screens.
void Desktop::place() {
    places_ = placeTiles(tilesToPlace(), outputs_.screens());
    if (places_.empty()) {
        for (const auto& [id, tile] : tiles_) {
            tile->hide();
        }
    }
    for (const PlacedTile& place : places_) {
        tiles_.at(place.id)->put(outputs_.all()[place.screen], place.frame);
    }
    savingPlacements_.idle<&Desktop::savePlacements>(this);
}

std::vector<TileToPlace> Desktop::tilesToPlace() const {
    std::vector<TileToPlace> tiles;
    for (const Instance& instance : arrangement_.instances) {
        tiles.push_back({&instance, settings_.tileSize(instance.family)});
    }
    return tiles;
}

/// Writes the free places that were chosen for tiles, so that the tiles stay there.
void Desktop::savePlacements() {
    const auto places = places_;
    for (const PlacedTile& place : places) {
        if (place.source == PlacedTile::Source::chosen) {
            // Ignores errors: the user did not ask for this write.
            moveTile(moveTo(place.id, place.screen, place.frame), [](const auto& /*result*/) {});
        }
    }
}

Move Desktop::moveTo(InstanceId id, std::size_t screen, const Rect& frame) const {
    const Screen& on = outputs_.all()[screen].screen;
    return {.id = id, .position = {frame.x - on.bounds.x, frame.y - on.bounds.y}, .output = on.name};
}

/// Moves the tile at once, and then writes its place.
void Desktop::moveTile(const Move& move, std::function<void(const HostApplication::Change& result)> done) {
    moves_.push_back(move);
    arrangementChanged(host_->arrangement());
    host_->change(move, [this, done = std::move(done)](const HostApplication::Change& result) {
        moves_.erase(moves_.begin());
        done(result);
    });
}

void Desktop::restyle() {
    for (const auto& [id, tile] : tiles_) {
        tile->restyle();
    }
    if (host_ != nullptr) {
        // Tiles grow with texts.
        place();
    }
    if (gallery_) {
        gallery_->restyle();
    }
    for (const auto& [id, editor] : editors_) {
        editor->restyle();
    }
}

void Desktop::askForPlaceholder(const Instance& instance) {
    const EntryRequest request{.method = EntryRequest::Method::placeholder,
                               .kind = instance.kind,
                               .family = instance.family,
                               .renderingMode = arrangement_.renderingMode,
                               .configuration = {}};
    host_->requestEntries(instance.extension, request, [this, id = instance.id](const auto& entries) {
        TileController* shown = tile(id);
        if (entries && shown != nullptr && shown->isWaiting()) {
            shown->showPlaceholder(entries->front().view);
        }
    });
}

void Desktop::menuRequested(InstanceId id, const std::optional<std::string>& url, const GdkEvent* event) {
    TileController* shown = tile(id);
    if (shown == nullptr) {
        return;
    }
    settings_.readTheme();
    const Instance instance = shown->instance();
    // For the next menu; this one uses the last description.
    catalog_.describe(*host_, instance.extension, [](const auto& /*widgets*/) {});
    const TileMenuState state{.instance = instance,
                              .widget = catalog_.widget(instance.extension, instance.kind),
                              .url = url,
                              .isLocked = arrangement_.locked,
                              .renderingMode = arrangement_.renderingMode};
    popUpTileMenu(shown->window().widget(), event, state,
                  {.edit = [this, id] { edit(id); },
                   .reload = [this, id] { host_->session().reload(id); },
                   .remove = [this, id] { remove(id); },
                   .addWidgets = [this] { showGallery(); },
                   .change = [this](const ArrangementChange& wanted) { change(wanted); }});
}

void Desktop::dragged(InstanceId id, Point distance) {
    TileController* shown = tile(id);
    if (arrangement_.locked || shown == nullptr || places_.empty()) {
        return;
    }
    if (!drag_) {
        std::multimap<std::size_t, Rect> others;
        for (const PlacedTile& place : places_) {
            if (place.id != id) {
                others.emplace(place.screen, place.frame);
            }
        }
        drag_.emplace(shown->window().rendered(), shown->frame(), outputs_, std::move(others));
        draggedId_ = id;
        shown->window().setDimmed(true);
    }
    drag_->move(distance);
}

void Desktop::dragEnded(InstanceId id, DragEnd end) {
    if (!drag_ || draggedId_ != id) {
        return;
    }
    const TileDrag::Place place = drag_->place();
    drag_.reset();
    TileController* shown = tile(id);
    if (shown == nullptr) {
        return;
    }
    shown->window().setDimmed(false);
    if (end == DragEnd::dropped && place.output < outputs_.all().size()) {
        moveTile(moveTo(id, place.output, place.frame), [this](const HostApplication::Change& result) {
            if (!result) {
                arrangementChanged(host_->arrangement());
                showUnsaved(result.error());
            }
        });
    }
}

void Desktop::keyPressed() {
    // The focus ring has the accent colour.
    settings_.readTheme();
}

void Desktop::remove(InstanceId id) {
    if (!removing_.insert(id).second) {
        return;
    }
    host_->change(Removal{.id = id}, [this, id](const HostApplication::Change& result) {
        removing_.erase(id);
        if (!result) {
            showUnsaved(result.error());
        }
    });
}

void Desktop::undoRequested(InstanceId id) {
    const auto found = removed_.find(id);
    if (found != removed_.end()) {
        const Instance instance = found->second->instance();
        change(Restoration{.instance = instance});
    }
}

void Desktop::showGallery() {
    if (const auto own = realHome(std::nullopt); home_ == examplesHome() && catalog_.missingFolders(own).empty()) {
        homeWanted_ = own;
        host_->end();
        return;
    }
    if (!gallery_) {
        settings_.readTheme();
        gallery_ = std::make_unique<GalleryWindow>(
            *host_, catalog_, renderers_, settings_, outputs_,
            GalleryWindow::Actions{
                .add = [this](const Instance& instance, auto added) { add(instance, std::move(added)); },
                .remove = [this](InstanceId id) { change(Removal{.id = id}); },
                .close = [this] { gallery_.reset(); }});
        if (home_ == examplesHome()) {
            gallery_->showBanner(localized("These are examples. Your own library is shown once there is one."));
        } else if (const auto missing = catalog_.missingFolders(home_); !missing.empty()) {
            gallery_->showMessage(noLibraryMessage(missing), [this] { showExamples(); });
        }
    }
    gallery_->present();
}

void Desktop::showExamples() {
    auto home = copyExamples();
    if (!home) {
        settings_.readTheme();
        showFailure(localized("The examples cannot be shown"), home.error());
        return;
    }
    homeWanted_ = *std::move(home);
    host_->end();
}

void Desktop::edit(InstanceId id) {
    TileController* shown = tile(id);
    const WidgetInfo* widget =
        shown == nullptr ? nullptr : catalog_.widget(shown->instance().extension, shown->instance().kind);
    if (widget == nullptr) {
        return;
    }
    auto& editor = editors_[id];
    if (!editor) {
        editor = std::make_unique<EditorWindow>(
            *host_, *widget, shown->instance(), renderers_, settings_,
            EditorWindow::Actions{.apply =
                                      [this, id](const Settings& settings, const std::optional<std::string>& family) {
                                          if (!settings.empty()) {
                                              change(Edit{.id = id, .settings = settings});
                                          }
                                          if (family) {
                                              change(Resizing{.id = id, .family = *family});
                                          }
                                      },
                                  .close = [this, id] { editors_.erase(id); }});
    }
    editor->present();
}

void Desktop::add(const Instance& instance, std::function<void(InstanceId id)> added) {
    host_->change(Addition{.instance = instance},
                  [this, added = std::move(added)](const HostApplication::Change& result) {
                      if (result) {
                          added(result->arrangement.instances.back().id);
                      } else {
                          showUnsaved(result.error());
                      }
                  });
}

void Desktop::change(const ArrangementChange& change) {
    host_->change(change, [this](const HostApplication::Change& result) {
        if (!result) {
            showUnsaved(result.error());
        }
    });
}

void Desktop::showUnsaved(const platform::Failure& error) {
    settings_.readTheme();
    showFailure(localized("The change could not be saved"), error.message);
}

TileController* Desktop::tile(InstanceId id) {
    const auto found = tiles_.find(id);
    return found == tiles_.end() ? nullptr : found->second.get();
}

} // namespace host
