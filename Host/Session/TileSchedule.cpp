#include "Host/Session/TileSchedule.h"

#include <algorithm>
#include <cmath>

namespace host {
namespace {

platform::Date roundedUp(platform::Date date) {
    return {std::ceil(date.secondsSinceReferenceDate)};
}

} // namespace

void TileSchedule::answered(platform::Date now, platform::Date reload) {
    failures_ = 0;
    lastRequest_ = now;
    due_ = roundedUp(std::max(reload, now.addingSeconds(minWait)));
}

void TileSchedule::failed(platform::Date now) {
    lastRequest_ = now;
    const double wait = minWait * std::pow(2, std::min(failures_, 10));
    ++failures_;
    due_ = roundedUp(now.addingSeconds(std::min(wait, maxWaitAfterFailure)));
}

void TileSchedule::clockChanged(platform::Date now) {
    if (now < lastRequest_) {
        due_ = now;
    }
}

} // namespace host
