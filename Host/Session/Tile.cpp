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
        reload(now);
    }
}

void Tile::reload(Date now) {
    awaited_.reset();
    schedule_.askAt(now);
}

void Tile::answered(Timeline timeline, Date now, double seconds) {
    awaited_.reset();
    history_ = {.lastSuccess = TileHistory::Success{now, seconds}, .lastFailure = std::nullopt};
    schedule_.answered(now, timeline.reload);
    entries_ = std::move(timeline.entries);
    current_ = 0;
}

void Tile::failed(NoAnswer why, Date now) {
    awaited_.reset();
    history_.lastFailure = TileHistory::Failure{now, std::move(why)};
    schedule_.failed(now);
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
