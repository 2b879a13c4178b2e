#include "Host/Session/Session.h"

#include "Host/Connection/Requests.h"

#include <algorithm>
#include <utility>

namespace host {

using platform::Date;
using platform::Failure;
using platform::Outcome;
using platform::Unexpected;

namespace {

SteadyTime steadyNow() {
    return std::chrono::steady_clock::now();
}

EntryRequest requestFor(const Instance& instance, const std::string& renderingMode) {
    return {.kind = instance.kind,
            .family = instance.family,
            .renderingMode = renderingMode,
            .configuration = {instance.configuration.begin(), instance.configuration.end()}};
}

template <class Time>
void include(std::optional<Time>& earliest, const std::optional<Time>& time) {
    if (time) {
        earliest = std::min(earliest.value_or(*time), *time);
    }
}

constexpr const char* wasRequested = "it was requested";

} // namespace

Session::Session(Dependencies dependencies)
    : dependencies_(std::move(dependencies)), files_(dependencies_.home.lexically_normal()),
      source_([this] { dispatch(); }) {
    updateSource();
}

void Session::setTiles(const std::vector<Instance>& instances) {
    const Date now = dependencies_.clock.now();
    std::map<InstanceId, Tile> kept;
    for (const Instance& instance : instances) {
        const auto known = tiles_.find(instance.id);
        if (known == tiles_.end()) {
            kept.emplace(instance.id, Tile(instance, now));
        } else {
            known->second.change(instance, now);
            kept.insert(tiles_.extract(known));
        }
    }
    for (const auto& [id, removed] : std::exchange(tiles_, std::move(kept))) {
        completeReloads(id, std::nullopt);
    }
    followFiles();
    dispatchSoon();
}

void Session::reload(const std::optional<std::string>& kind, Reloaded done) {
    ReloadRequest request{.pending = {}, .failures = {}, .done = std::move(done)};
    for (auto& [id, tile] : tiles_) {
        if (!kind || tile.instance().kind == *kind) {
            tile.reload(dependencies_.clock.now(), wasRequested);
            request.pending.push_back(id);
        }
    }
    if (request.pending.empty()) {
        request.done({});
    } else {
        reloads_.push_back(std::move(request));
        dispatchSoon();
    }
}

void Session::reload(InstanceId id) {
    const auto known = tiles_.find(id);
    if (known != tiles_.end()) {
        known->second.reload(dependencies_.clock.now(), wasRequested);
        dispatchSoon();
    }
}

void Session::setRenderingMode(const std::string& mode) {
    if (std::exchange(renderingMode_, mode) != mode) {
        reload(std::nullopt, [](const auto& /*failures*/) {});
    }
}

void Session::request(const std::string& extension, std::string_view method, std::string_view params,
                      ExtensionClient::Responded responded) {
    pending_.push_back({extension, std::string(method), std::string(params), std::move(responded)});
    dispatchSoon();
}

const Tile* Session::tile(InstanceId id) const {
    const auto known = tiles_.find(id);
    return known == tiles_.end() ? nullptr : &known->second;
}

void Session::clockChanged() {
    for (auto& [id, tile] : tiles_) {
        tile.clockChanged(dependencies_.clock.now());
    }
    dispatchSoon();
}

void Session::dispatch() {
    if (source_.isReady(timer_.descriptor()) && timer_.take() == WallTimer::Event::clockSet) {
        clockChanged();
    }
    takeFileChanges();
    std::erase_if(extensions_, [](const auto& each) { return each.second->hasEnded(); });
    sendPending();
    requestDueTiles();
    for (auto& [id, tile] : tiles_) {
        if (tile.advance(dependencies_.clock.now())) {
            dependencies_.observer.tileUpdated(tile, TileUpdate::entry);
        }
    }
    updateSource();
}

void Session::takeFileChanges() {
    const SteadyTime now = steadyNow();
    files_.dispatch(now);
    for (const std::string& path : files_.takeChanged(now)) {
        for (auto& [id, tile] : tiles_) {
            if (tile.watches().contains(path)) {
                tile.fileChanged(path, now);
            }
        }
    }
    if (files_.failure() != warning_) {
        warning_ = files_.failure();
        if (warning_ && dependencies_.warn) {
            dependencies_.warn(*warning_);
        }
    }
}

void Session::sendPending() {
    // A callback may add the next.
    for (Request& request : std::exchange(pending_, {})) {
        const auto client = extension(request.extension);
        if (client) {
            (*client)->send(request.method, request.params, std::move(request.responded));
        } else {
            request.responded(Unexpected{client.error()});
        }
    }
}

void Session::requestDueTiles() {
    const Date now = dependencies_.clock.now();
    std::map<std::string, std::vector<Tile*>> due;
    for (auto& [id, tile] : tiles_) {
        if (tile.isDue(now, steadyNow())) {
            due[tile.instance().extension].push_back(&tile);
        }
    }
    for (const auto& [identifier, tiles] : due) {
        const auto client = extension(identifier);
        for (Tile* tile : tiles) {
            if (client) {
                requestTimeline(*tile, **client);
            } else {
                handleFailure(*tile, {now, TileFailure::Cause::notStarted, client.error().message});
            }
        }
    }
}

void Session::requestTimeline(Tile& tile, ExtensionClient& extension) {
    const RequestId id{++lastRequest_};
    tile.requested(id, steadyNow());
    const EntryRequest request = requestFor(tile.instance(), renderingMode_);
    extension.send(methodName(request.method), paramsOf(request),
                   [this, id, instance = tile.instance().id, manifest = extension.manifest()](const auto& result) {
                       handleResponse(instance, id, manifest, result);
                   });
}

/// Returns the process for the next request, and starts it if it does not run.
Outcome<ExtensionClient*> Session::extension(const std::string& identifier) {
    std::vector<ExtensionClient*> outdated;
    const auto [first, last] = extensions_.equal_range(identifier);
    for (auto each = first; each != last; ++each) {
        ExtensionClient& client = *each->second;
        if (client.isShuttingDown()) {
            continue;
        }
        if (!client.needsRestart()) {
            return &client;
        }
        outdated.push_back(&client);
        client.shutDown();
    }
    const auto manifest = dependencies_.findManifest(identifier);
    if (!manifest) {
        return Unexpected{manifest.error()};
    }
    auto started = dependencies_.startExtension(*manifest);
    if (!started) {
        return Unexpected{started.error()};
    }
    ExtensionClient& client = *extensions_.emplace(identifier, *std::move(started))->second;
    client.onEnd([this] { dispatchSoon(); });
    for (ExtensionClient* each : outdated) {
        // Their responses may lack what has been replaced.
        client.takeRequests(*each);
    }
    return &client;
}

void Session::handleResponse(InstanceId id, RequestId request, const Manifest& manifest,
                             const ExtensionClient::Result& result) {
    const auto known = tiles_.find(id);
    if (known == tiles_.end() || known->second.awaited() != request) {
        return;
    }
    Tile& tile = known->second;
    auto timeline = result ? readTimeline(*result) : Outcome<Timeline>(Unexpected{result.error()});
    if (timeline) {
        handleTimeline(tile, *std::move(timeline), manifest);
    } else {
        const bool isGone = !result && result.error().kind == Failure::Kind::unavailable;
        handleFailure(tile, {dependencies_.clock.now(),
                             isGone ? TileFailure::Cause::stopped : TileFailure::Cause::invalidResponse,
                             timeline.error().message});
    }
    dispatchSoon();
}

void Session::handleTimeline(Tile& tile, Timeline timeline, const Manifest& manifest) {
    // First, because the response does not count if a file was being written meanwhile.
    takeFileChanges();
    const Date now = dependencies_.clock.now();
    const std::chrono::duration<double> taken = steadyNow() - tile.lastRequestTime();
    auto watches = watchesOf(timeline, manifest);
    const bool isUnsettled = std::any_of(watches.begin(), watches.end(), [&](const std::string& path) {
        return files_.isUnsettledSince(path, tile.lastRequestTime());
    });
    if (!isUnsettled || !tile.discard(timeline, now)) {
        tile.answered(std::move(timeline), std::move(watches), now, taken.count());
        const auto before = followed_;
        followFiles();
        for (const std::string& path : tile.watches()) {
            // It may have changed between the extension's reading and `follow`.
            if (!before.contains(path) && files_.hasChangedSince(path, now.addingSeconds(-taken.count()))) {
                tile.fileChanged(path, steadyNow());
            }
        }
    }
    dependencies_.observer.tileUpdated(tile, tile.advance(now) ? TileUpdate::entry : TileUpdate::status);
    completeReloads(tile.instance().id, std::nullopt);
}

void Session::handleFailure(Tile& tile, TileFailure failure) {
    const InstanceId id = tile.instance().id;
    const std::string message = std::to_string(id) + ": " + failure.message;
    tile.failed(std::move(failure));
    dependencies_.observer.tileUpdated(tile, TileUpdate::status);
    completeReloads(id, message);
}

/// Returns the absolute paths of those files that the extension may read.
std::set<std::string> Session::watchesOf(const Timeline& timeline, const Manifest& manifest) const {
    std::set<std::string> watches;
    for (const std::string& path : timeline.watches) {
        if (dependencies_.home.is_absolute() && mayRead(manifest, path)) {
            watches.insert((dependencies_.home / path).lexically_normal().string());
        }
    }
    return watches;
}

void Session::followFiles() {
    std::set<std::string> all;
    for (const auto& [id, tile] : tiles_) {
        all.insert(tile.watches().begin(), tile.watches().end());
    }
    if (all != followed_) {
        files_.follow(all);
        followed_ = std::move(all);
    }
}

void Session::completeReloads(InstanceId id, const std::optional<std::string>& failure) {
    for (ReloadRequest& request : reloads_) {
        if (std::erase(request.pending, id) > 0 && failure) {
            request.failures.push_back(*failure);
        }
    }
    const auto rest = std::stable_partition(reloads_.begin(), reloads_.end(),
                                            [](const ReloadRequest& request) { return !request.pending.empty(); });
    const std::vector<ReloadRequest> complete(std::make_move_iterator(rest), std::make_move_iterator(reloads_.end()));
    reloads_.erase(rest, reloads_.end());
    for (const ReloadRequest& request : complete) {
        request.done(request.failures);
    }
}

/// Sets what the main loop waits for.
void Session::updateSource() {
    std::optional<SteadyTime> deadline = files_.deadline();
    std::optional<Date> date;
    for (const auto& [id, tile] : tiles_) {
        include(deadline, tile.fileDeadline());
        include(date, tile.nextEvent());
    }
    if (!pending_.empty()) {
        deadline = SteadyTime();
    }
    source_.watch(files_.descriptor(), followed_.empty() ? GIOCondition{} : G_IO_IN);
    source_.watch(timer_.descriptor(), G_IO_IN);
    source_.setDeadline(deadline);
    timer_.set(date);
}

} // namespace host
