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
}

void Session::reload(const std::optional<std::string>& kind, Reloaded done) {
    Waiter waiter{.pending = {}, .failures = {}, .done = std::move(done)};
    for (auto& [id, tile] : tiles_) {
        if (!kind || tile.instance().kind == *kind) {
            tile.reload(around_.clock.now());
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
        known->second.reload(around_.clock.now());
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
    std::optional<SteadyTime> earliest;
    for (const auto& [identifier, extension] : extensions_) {
        if (const auto deadline = extension->deadline()) {
            earliest = std::min(earliest.value_or(*deadline), *deadline);
        }
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
    exchange(ready);
    bury();
    askQuestions();
    askForDueTiles();
    for (auto& [id, tile] : tiles_) {
        if (tile.advance(around_.clock.now())) {
            around_.observer.tileChanged(tile);
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
        finish(answer->ticket,
               line ? Expected<std::string, NoAnswer>(*std::move(line))
                    : Unexpected{NoAnswer{NoAnswer::Cause::unusable, line.error().message}},
               answer->seconds);
    }
}

/// Has those know who wait for extensions that are lost, and lets go of these when they are gone.
void Session::bury() {
    std::erase_if(extensions_, [this](const auto& each) {
        RunningExtension& extension = *each.second;
        const auto lost = extension.channel().lost();
        if (lost) {
            for (const Ticket ticket : extension.takeUnanswered()) {
                finish(ticket, Unexpected{NoAnswer{NoAnswer::Cause::lost, *lost}}, 0);
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
        if (!tile.awaited() && tile.schedule().due() <= now) {
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
            tile->asked(ticket);
        } else {
            fail(*tile, {NoAnswer::Cause::notStarted, extension.error()});
            around_.observer.tileReloaded(*tile);
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

void Session::finish(Ticket ticket, const Expected<std::string, NoAnswer>& answer, double seconds) {
    if (const auto question = asked_.extract(ticket)) {
        question.mapped()(answer ? Expected<std::string, std::string>(*answer) : Unexpected{answer.error().reason});
        return;
    }
    const auto asker = std::find_if(tiles_.begin(), tiles_.end(),
                                    [ticket](const auto& each) { return each.second.awaited() == ticket; });
    if (asker != tiles_.end()) {
        finish(asker->second, answer, seconds);
        around_.observer.tileReloaded(asker->second);
    }
}

void Session::finish(Tile& tile, const Expected<std::string, NoAnswer>& answer, double seconds) {
    if (!answer) {
        fail(tile, answer.error());
        return;
    }
    auto timeline = readTimeline(*answer);
    if (!timeline) {
        fail(tile, {NoAnswer::Cause::unusable, timeline.error()});
        return;
    }
    tile.answered(*std::move(timeline), around_.clock.now(), seconds);
    tellWaiters(tile.instance().id, std::nullopt);
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
