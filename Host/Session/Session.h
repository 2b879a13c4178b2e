// Keeps the entries of all tiles up to date, and supervises the extensions that make them.
//
// Runs on GLib's main loop, in the default main context. Between reloads nothing wakes up.
//
//  - A tile is requested when it is due (TileSchedule.h). Its extension is started for that, unless it runs already.
//    All due tiles of an extension are requested together. It shuts down after five seconds without a request.
//  - An extension that ends, exceeds a timeout (Timeouts.h), floods or breaks the protocol is killed. Its tiles keep
//    their entries and are tried again, each by its schedule. Tiles of other extensions are not affected.
//  - A tile is also requested when a file changes that its last response names (FileWatcher.h). A response that came
//    while such a file was being written is discarded, so that half a file is never shown.
//  - An entry that equals the one before is not reported.
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

/// What has changed in a tile.
enum class TileUpdate {
    /// The result of its last reload, or the date of the next one.
    status,
    /// The view of its entry, or the link of a click; perhaps the status, too.
    entry,
};

class SessionObserver {
  public:
    virtual ~SessionObserver() = default;
    /// Called once for each response or failure, and when the date of the tile's next entry has come.
    virtual void tileUpdated(const Tile& tile, TileUpdate update) = 0;
};

class Session {
  public:
    /// Reads the current manifest of the extension with that identifier.
    using FindManifest = std::function<platform::Outcome<Manifest>(const std::string& identifier)>;
    using StartExtension = std::function<platform::Outcome<std::unique_ptr<ExtensionClient>>(const Manifest& manifest)>;

    /// The clock and the observer must outlive the session.
    struct Dependencies {
        FindManifest findManifest;
        StartExtension startExtension;
        const platform::Clock& clock;
        SessionObserver& observer;
        /// The user's real home, absolute. The paths of followed files are relative to it.
        std::filesystem::path home;
        /// Called with a warning of one line; may be empty.
        std::function<void(const std::string& message)> warn;
    };
    explicit Session(Dependencies dependencies);

    /// Replaces the tiles. Requests those that are new or show something else at once.
    void setTiles(const std::vector<Instance>& instances);

    /// Sets the rendering mode, by the protocol's name. Requests all tiles at once if it is another one.
    void setRenderingMode(const std::string& mode);

    /// Called when all tiles of a reload have their responses or have failed, with the messages of the failures.
    using Reloaded = std::function<void(const std::vector<std::string>& failures)>;
    /// Requests the tiles of that kind, or all, at once. Calls `done` before it returns if there are no such tiles.
    void reload(const std::optional<std::string>& kind, Reloaded done);
    /// Requests one tile at once, if it exists.
    void reload(InstanceId id);

    /// Sends a request to an extension, which is started if it does not run. Requires a JSON object as `params`.
    /// `responded` is called once, from the main loop.
    void request(const std::string& extension, std::string_view method, std::string_view params,
                 ExtensionClient::Responded responded);

    const Tile* tile(InstanceId id) const;
    const std::map<InstanceId, Tile>& tiles() const { return tiles_; }

    /// To be called when the wall clock was set or the machine has slept.
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
