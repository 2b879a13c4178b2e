// The core of a host that runs day and night: keeps every tile's entry up to date, and every extension in its bounds.
//
// It runs on GLib's main loop, in the default main context; between reloads nothing wakes up.
//
//  - A tile is asked for when it is due (see TileSchedule.h). Its extension is started for that if it does not run, all
//    its due tiles are asked for together, and it shuts down when it has had nothing to do for five seconds.
//  - An extension that ends, is silent for too long (Timeouts.h), floods or speaks nonsense is ended. Its tiles keep
//    their entries and are tried again, each by its schedule; other extensions' tiles are not affected.
//  - A tile is asked for, too, when one of the files changes that its answer names (see FileWatcher.h). An answer that
//    came while such a file was being written is discarded, so that half a file is never shown.
//  - An entry that is equal to the one before is not reported.
//
// One thread.
#pragma once

#include "Host/Connection/ExtensionClient.h"
#include "Host/Session/FileWatcher.h"
#include "Host/Session/Tile.h"
#include "Host/Session/WallTimer.h"
#include "Platform/Foundation/Clock.h"

#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace host {

/// What has changed of a tile.
enum class TileUpdate {
    /// How its last reload went, or when the next one is due.
    status,
    /// Its entry has another view, or another address for a click; the status may have changed, too.
    entry,
};

class SessionObserver {
  public:
    virtual ~SessionObserver() = default;
    /// Called once for each answer or failure, and when the date of the tile's next entry has come.
    virtual void tileUpdated(const Tile& tile, TileUpdate update) = 0;
};

class Session {
  public:
    /// Finds the manifest of the extension with that identifier, as it is now.
    using FindManifest = std::function<platform::Outcome<Manifest>(const std::string& identifier)>;
    using StartExtension = std::function<platform::Outcome<std::unique_ptr<ExtensionClient>>(const Manifest& manifest)>;

    /// The clock and the observer must outlive the session.
    struct Dependencies {
        FindManifest findManifest;
        StartExtension startExtension;
        const platform::Clock& clock;
        SessionObserver& observer;
        /// The user's real home, which the paths of followed files start from; absolute.
        std::filesystem::path home;
        /// Called with one clear line when something does not work as it should; may be empty.
        std::function<void(const std::string& message)> warn;
    };
    explicit Session(Dependencies dependencies);

    /// From now on these are the tiles. New ones and those that show something else are asked for at once.
    void setTiles(const std::vector<Instance>& instances);

    /// From now on tiles are asked for in this rendering mode, by the protocol's name; at once, if it is another one.
    void setRenderingMode(const std::string& mode);

    /// Called when the tiles that were to be reloaded have their answers or have failed, with the failures in words.
    using Reloaded = std::function<void(const std::vector<std::string>& failures)>;
    /// Asks for the tiles of that kind, or all, at once. `done` is called before this returns if there are no tiles.
    void reload(const std::optional<std::string>& kind, Reloaded done);
    /// Asks for one tile at once, if it is there.
    void reload(InstanceId id);

    /// Sends a request of the user's to an extension, which is started for it if it does not run; `params` is a JSON
    /// object. `responded` is called once, from the main loop.
    void request(const std::string& extension, std::string_view method, std::string_view params,
                 ExtensionClient::Responded responded);

    const Tile* tile(InstanceId id) const;
    const std::map<InstanceId, Tile>& tiles() const { return tiles_; }

    /// The wall clock was set, or the machine has slept.
    void clockChanged();

  private:
    struct ReloadRequest {
        std::vector<InstanceId> pending;
        std::vector<std::string> failures;
        Reloaded done;
    };
    struct Request {
        std::string extension;
        std::string method;
        std::string params;
        ExtensionClient::Responded responded;
    };

    void dispatch();
    void dispatchSoon() { source_.setDeadline(SteadyTime()); }
    void takeFileChanges();
    void sendPending();
    void requestDueTiles();
    void requestTimeline(Tile& tile, ExtensionClient& extension);
    platform::Outcome<ExtensionClient*> extension(const std::string& identifier);
    void handleResponse(InstanceId id, RequestId request, const Manifest& manifest,
                        const ExtensionClient::Result& result);
    void handleTimeline(Tile& tile, Timeline timeline, const Manifest& manifest);
    void handleFailure(Tile& tile, TileFailure failure);
    std::set<std::string> watchesOf(const Timeline& timeline, const Manifest& manifest) const;
    void followFiles();
    void completeReloads(InstanceId id, const std::optional<std::string>& failure);
    void updateSource();

    Dependencies dependencies_;
    FileWatcher files_;
    std::set<std::string> followed_;
    std::optional<std::string> warning_;
    std::map<InstanceId, Tile> tiles_;
    std::vector<ReloadRequest> reloads_;
    std::vector<Request> pending_;
    std::string renderingMode_ = Arrangement::fullColor;
    std::uint64_t lastRequest_ = 0;
    WallTimer timer_;
    EventSource source_;
    /// By identifier. Includes processes that are shutting down; they get no new requests.
    std::multimap<std::string, std::unique_ptr<ExtensionClient>> extensions_;
};

} // namespace host
