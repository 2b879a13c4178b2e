#include "Host/Session/Session.h"

#include "Host/Connection/ExtensionConnection.h"
#include "Host/Connection/Requests.h"

#include <algorithm>
#include <utility>

namespace host {

using platform::Date;
using platform::Expected;
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

constexpr const char* askedFor = "it was asked for";

} // namespace

void Session::setTiles(const std::vector<Instance>& instances) {
    const Date now = around_.clock.now();
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
    // What is left has been removed, and nobody waits for it any more.
    for (const auto& [id, tile] : std::exchange(tiles_, std::move(kept))) {
        tellWaiters(id, std::nullopt);
    }
    followFiles();
}

void Session::reload(const std::optional<std::string>& kind, Reloaded done) {
    Waiter waiter{.pending = {}, .failures = {}, .done = std::move(done)};
    for (auto& [id, tile] : tiles_) {
        if (!kind || tile.instance().kind == *kind) {
            tile.reload(around_.clock.now(), askedFor);
            waiter.pending.push_back(id);
        }
    }
    if (waiter.pending.empty()) {
        waiter.done({});
    } else {
        waiters_.push_back(std::move(waiter));
    }
}

void Session::reload(InstanceId id) {
    const auto known = tiles_.find(id);
    if (known != tiles_.end()) {
        known->second.reload(around_.clock.now(), askedFor);
    }
}

void Session::setRenderingMode(const std::string& mode) {
    if (std::exchange(renderingMode_, mode) != mode) {
        reload(std::nullopt, [](const auto& /*failures*/) {});
    }
}

void Session::ask(const std::string& extension, std::string_view method, std::string_view params, Answered done) {
    questions_.push_back({extension, std::string(method), std::string(params), std::move(done)});
}

const Tile* Session::tile(InstanceId id) const {
    const auto known = tiles_.find(id);
    return known == tiles_.end() ? nullptr : &known->second;
}

void Session::clockChanged() {
    for (auto& [id, tile] : tiles_) {
        tile.clockChanged(around_.clock.now());
    }
}

std::vector<pollfd> Session::awaited() const {
    std::vector<pollfd> all;
    if (!followed_.empty() && files_.descriptor() >= 0) {
        all.push_back({files_.descriptor(), POLLIN, 0});
    }
    for (const auto& [identifier, extension] : extensions_) {
        for (const pollfd& descriptor : extension->channel().awaited()) {
            if (descriptor.fd >= 0) {
                all.push_back(descriptor);
            }
        }
    }
    return all;
}

std::optional<SteadyTime> Session::deadline() const {
    std::optional<SteadyTime> earliest = files_.deadline();
    const auto include = [&earliest](const std::optional<SteadyTime>& deadline) {
        if (deadline) {
            earliest = std::min(earliest.value_or(*deadline), *deadline);
        }
    };
    for (const auto& [identifier, extension] : extensions_) {
        include(extension->deadline());
    }
    for (const auto& [id, tile] : tiles_) {
        include(tile.fileDeadline());
    }
    return earliest;
}

std::optional<Date> Session::nextDate() const {
    std::optional<Date> earliest;
    for (const auto& [id, tile] : tiles_) {
        if (const auto next = tile.nextEvent()) {
            earliest = std::min(earliest.value_or(*next), *next);
        }
    }
    return earliest;
}

void Session::step(std::span<const pollfd> ready) {
    // Before the answers: those that came while files were being written do not count.
    noticeChangedFiles();
    exchange(ready);
    bury();
    askQuestions();
    askForDueTiles();
    for (auto& [id, tile] : tiles_) {
        if (tile.advance(around_.clock.now())) {
            around_.observer.tileUpdated(tile, TileUpdate::entry);
        }
    }
}

void Session::noticeChangedFiles() {
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
        if (warning_ && around_.warn) {
            around_.warn(*warning_);
        }
    }
}

void Session::exchange(std::span<const pollfd> ready) {
    const SteadyTime now = steadyNow();
    for (auto& [identifier, extension] : extensions_) {
        auto descriptors = extension->channel().awaited();
        for (pollfd& descriptor : descriptors) {
            const auto known =
                std::find_if(ready.begin(), ready.end(), [&](const pollfd& each) { return each.fd == descriptor.fd; });
            descriptor.revents = known == ready.end() || descriptor.fd < 0 ? short{0} : known->revents;
        }
        extension->exchange(descriptors, now);
        takeAnswers(*extension);
        extension->expire(now);
    }
}

void Session::takeAnswers(RunningExtension& extension) {
    while (auto answer = extension.nextAnswer(steadyNow())) {
        auto line = answerWithResult(std::move(answer->line));
        finish(answer->ticket, {.answer = line ? Expected<std::string, NoAnswer>(*std::move(line))
                                               : Unexpected{NoAnswer{NoAnswer::Cause::unusable, line.error().message}},
                                .seconds = answer->seconds,
                                .manifest = extension.channel().manifest()});
    }
}

/// Has those know who wait for extensions that are lost, and lets go of these when they are gone.
void Session::bury() {
    std::erase_if(extensions_, [this](const auto& each) {
        RunningExtension& extension = *each.second;
        const auto lost = extension.channel().lost();
        if (lost) {
            for (const Ticket ticket : extension.takeUnanswered()) {
                finish(ticket, {.answer = Unexpected{NoAnswer{NoAnswer::Cause::lost, *lost}},
                                .seconds = 0,
                                .manifest = extension.channel().manifest()});
            }
        }
        return extension.channel().hasEnded();
    });
}

void Session::askQuestions() {
    // Whoever is answered here may ask the next.
    for (Question& question : std::exchange(questions_, {})) {
        const auto extension = running(question.extension);
        if (extension) {
            const Ticket ticket{++lastTicket_};
            (*extension)->ask(question.method, question.params, ticket, steadyNow());
            asked_.emplace(ticket, std::move(question.done));
        } else {
            question.done(Unexpected{extension.error()});
        }
    }
}

void Session::askForDueTiles() {
    const Date now = around_.clock.now();
    std::map<std::string, std::vector<Tile*>> due;
    for (auto& [id, tile] : tiles_) {
        if (tile.isDue(now, steadyNow())) {
            due[tile.instance().extension].push_back(&tile);
        }
    }
    for (const auto& [identifier, tiles] : due) {
        ask(identifier, tiles);
    }
}

void Session::ask(const std::string& identifier, const std::vector<Tile*>& due) {
    const auto extension = running(identifier);
    for (Tile* tile : due) {
        if (extension) {
            const Ticket ticket{++lastTicket_};
            const EntryRequest request = requestFor(tile->instance(), renderingMode_);
            (*extension)->ask(methodName(request.method), paramsOf(request), ticket, steadyNow());
            tile->asked(ticket, steadyNow());
        } else {
            fail(*tile, {NoAnswer::Cause::notStarted, extension.error()});
            around_.observer.tileUpdated(*tile, TileUpdate::status);
        }
    }
}

Expected<RunningExtension*, std::string> Session::running(const std::string& identifier) {
    std::vector<RunningExtension*> stale;
    const auto [first, last] = extensions_.equal_range(identifier);
    for (auto each = first; each != last; ++each) {
        RunningExtension& extension = *each->second;
        if (extension.isLeaving()) {
            continue;
        }
        if (!extension.channel().isStale()) {
            return &extension;
        }
        // What it may read lies somewhere else now; another process will see it.
        stale.push_back(&extension);
        extension.dismiss(steadyNow());
    }
    const auto manifest = around_.findManifest(identifier);
    if (!manifest) {
        return Unexpected{manifest.error()};
    }
    auto channel = around_.startExtension(*manifest);
    if (!channel) {
        return Unexpected{channel.error()};
    }
    auto started = std::make_unique<RunningExtension>(*std::move(channel), around_.timeouts, steadyNow());
    for (RunningExtension* each : stale) {
        // Its answers may lack what has been replaced.
        started->takeOver(*each, steadyNow());
    }
    return extensions_.emplace(identifier, std::move(started))->second.get();
}

void Session::finish(Ticket ticket, const Reply& reply) {
    if (const auto question = asked_.extract(ticket)) {
        question.mapped()(reply.answer ? Expected<std::string, std::string>(*reply.answer)
                                       : Unexpected{reply.answer.error().reason});
        return;
    }
    const auto asker = std::find_if(tiles_.begin(), tiles_.end(),
                                    [ticket](const auto& each) { return each.second.awaited() == ticket; });
    if (asker != tiles_.end()) {
        Tile& tile = asker->second;
        finish(tile, reply);
        around_.observer.tileUpdated(tile, tile.advance(around_.clock.now()) ? TileUpdate::entry : TileUpdate::status);
    }
}

void Session::finish(Tile& tile, const Reply& reply) {
    if (!reply.answer) {
        fail(tile, reply.answer.error());
        return;
    }
    auto timeline = readTimeline(*reply.answer);
    if (!timeline) {
        fail(tile, {NoAnswer::Cause::unusable, timeline.error()});
        return;
    }
    const Date now = around_.clock.now();
    auto watches = watchesOf(*timeline, reply.manifest);
    const SteadyTime asked =
        steadyNow() - std::chrono::duration_cast<SteadyTime::duration>(std::chrono::duration<double>(reply.seconds));
    const bool isUnsettled = std::any_of(watches.begin(), watches.end(),
                                         [&](const std::string& path) { return files_.isUnsettledSince(path, asked); });
    if (!isUnsettled || !tile.discard(*timeline, now)) {
        tile.answered(*std::move(timeline), std::move(watches), now, reply.seconds);
        const auto before = followed_;
        followFiles();
        for (const std::string& path : tile.watches()) {
            // It may have changed after it was read and before it was followed.
            if (!before.contains(path) && files_.hasChangedSince(path, now.addingSeconds(-reply.seconds))) {
                tile.fileChanged(path, steadyNow());
            }
        }
    }
    tellWaiters(tile.instance().id, std::nullopt);
}

/// The files that an extension may have followed, by their absolute paths.
std::set<std::string> Session::watchesOf(const Timeline& timeline, const Manifest& manifest) const {
    std::set<std::string> watches;
    for (const std::string& path : timeline.watches) {
        if (around_.home.is_absolute() && mayRead(manifest, path)) {
            watches.insert((around_.home / path).lexically_normal().string());
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

void Session::fail(Tile& tile, const NoAnswer& why) {
    tile.failed(why, around_.clock.now());
    tellWaiters(tile.instance().id, std::to_string(tile.instance().id) + ": " + why.reason);
}

void Session::tellWaiters(InstanceId id, const std::optional<std::string>& failure) {
    std::vector<Waiter> served;
    for (Waiter& waiter : waiters_) {
        if (std::erase(waiter.pending, id) > 0 && failure) {
            waiter.failures.push_back(*failure);
        }
    }
    const auto isServed = [](const Waiter& waiter) { return waiter.pending.empty(); };
    const auto rest = std::stable_partition(waiters_.begin(), waiters_.end(), std::not_fn(isServed));
    std::move(rest, waiters_.end(), std::back_inserter(served));
    waiters_.erase(rest, waiters_.end());
    for (const Waiter& waiter : served) {
        waiter.done(waiter.failures);
    }
}

} // namespace host
