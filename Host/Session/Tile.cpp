#include "Host/Session/Tile.h"

#include <algorithm>
#include <utility>

namespace host {

using platform::Date;

std::optional<Date> Tile::nextEvent() const {
    std::optional<Date> next;
    if (current_ + 1 < entries_.size()) {
        next = entries_[current_ + 1].date;
    }
    if (!awaited_) {
        next = std::min(next.value_or(schedule_.due()), schedule_.due());
    }
    return next;
}

void Tile::change(Instance instance, Date now) {
    const Instance before = std::exchange(instance_, std::move(instance));
    const bool showsTheSame = before.extension == instance_.extension && before.kind == instance_.kind &&
                              before.family == instance_.family && before.configuration == instance_.configuration;
    if (!showsTheSame) {
        reload(now, "its settings were changed");
    }
}

bool Tile::isDue(Date date, SteadyTime time) const {
    return !awaited_ && (schedule_.due() <= date || (fileDeadline_ && *fileDeadline_ <= time));
}

void Tile::reload(Date now, std::string reason) {
    awaited_.reset();
    schedule_.scheduleAt(now);
    reason_ = std::move(reason);
}

void Tile::fileChanged(const std::string& path, SteadyTime now) {
    const auto interval =
        schedule_.failures() > 0 ? std::chrono::milliseconds(minIntervalAfterFailure) : minReloadInterval;
    fileDeadline_ = std::max(now, lastRequestTime_ + interval);
    reason_ = path + " changed";
}

void Tile::clockChanged(Date now) {
    schedule_.clockChanged(now);
    if (!watches_.empty()) {
        reload(now, "the clock was set or the machine has slept");
    }
}

void Tile::requested(RequestId request, SteadyTime now) {
    awaited_ = request;
    lastRequestTime_ = now;
    fileDeadline_.reset();
    history_.reason = std::exchange(reason_, "it was due");
}

bool Tile::discard(const Timeline& timeline, Date now) {
    if (entries_.empty() || ++discarded_ > maxDiscarded) {
        return false;
    }
    awaited_.reset();
    schedule_.answered(now, timeline.reload);
    return true;
}

void Tile::answered(Timeline timeline, std::set<std::string> watches, Date now, double seconds) {
    awaited_.reset();
    discarded_ = 0;
    history_.lastSuccess = TileHistory::Success{now, seconds};
    history_.lastFailure.reset();
    schedule_.answered(now, timeline.reload);
    watches_ = std::move(watches);
    entries_ = std::move(timeline.entries);
    current_ = 0;
}

void Tile::failed(TileFailure failure) {
    awaited_.reset();
    schedule_.failed(failure.date);
    history_.lastFailure = std::move(failure);
}

bool Tile::advance(Date now) {
    if (entries_.empty()) {
        return false;
    }
    const auto shown = entryAt(entries_, now);
    current_ = static_cast<std::size_t>(shown - entries_.begin());
    if (seen_ && seen_->view == shown->view && seen_->widgetURL == shown->widgetURL) {
        return false;
    }
    seen_ = *shown;
    return true;
}

} // namespace host
