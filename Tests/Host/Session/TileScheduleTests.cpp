#include "Host/Session/TileSchedule.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace host {
namespace {

using platform::Date;

TEST(TileSchedule, AsksAgainAtTheReloadDateButNotWithinFiveSeconds) {
    const std::pair<double, double> rows[]{{1300.001, 1301}, {1007, 1007}, {1005, 1006}, {-1e12, 1006}};
    for (const auto& [reload, due] : rows) {
        TileSchedule schedule(Date{1000});
        schedule.answered(Date{1000.5}, Date{reload});
        EXPECT_EQ(schedule.due().secondsSinceReferenceDate, due) << reload;
    }
}

TEST(TileSchedule, TriesAgainLaterAndLaterUntilThereIsAnAnswer) {
    TileSchedule schedule(Date{0});
    EXPECT_EQ(schedule.due(), Date{0});
    double now = 0;
    for (int failure = 0; failure < 5000; ++failure) {
        schedule.failed(Date{now});
        const double wait = std::vector{5., 10., 20., 40., 80., 160., 300.}.at(std::min(failure, 6));
        EXPECT_EQ(schedule.due().secondsSinceReferenceDate, now + wait);
        now += wait;
    }
    schedule.answered(Date{now}, Date{now + 60});
    schedule.failed(Date{now});
    EXPECT_EQ(schedule.due().secondsSinceReferenceDate, now + 5);
}

TEST(TileSchedule, HoldsItsDatesWhenTheClockIsSetUnlessTheyMeanNothingAnyMore) {
    TileSchedule schedule(Date{0});
    schedule.answered(Date{1000}, Date{1300});
    schedule.clockChanged(Date{5000});
    EXPECT_EQ(schedule.due(), Date{1300});
    schedule.clockChanged(Date{999});
    EXPECT_EQ(schedule.due(), Date{999});
}

} // namespace
} // namespace host
