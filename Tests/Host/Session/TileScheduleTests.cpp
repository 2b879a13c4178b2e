#include "Host/Session/TileSchedule.h"

#include <gtest/gtest.h>

namespace host {
namespace {

using platform::Date;

TEST(TileSchedule, AsksAgainAtTheReloadDateButNotWithinFiveSeconds) {
    const std::pair<double, double> rows[]{{1300, 1300},   {1300.001, 1301}, {1005.5, 1006}, {1005, 1006},
                                           {1004.9, 1006}, {1000.5, 1006},   {0, 1006},      {-1e12, 1006}};
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
    for (const double wait : {5., 10., 20., 40., 80., 160., 300., 300., 300.}) {
        schedule.failed(Date{now});
        EXPECT_EQ(schedule.due().secondsSinceReferenceDate, now + wait);
        now += wait;
    }
    for (int i = 0; i < 5000; ++i) {
        schedule.failed(Date{now});
    }
    EXPECT_EQ(schedule.due().secondsSinceReferenceDate, now + 300);
    schedule.answered(Date{now}, Date{now + 60});
    EXPECT_EQ(schedule.failures(), 0);
    schedule.failed(Date{now});
    EXPECT_EQ(schedule.due().secondsSinceReferenceDate, now + 5);
}

TEST(TileSchedule, HoldsItsDatesWhenTheClockIsSetUnlessTheyMeanNothingAnyMore) {
    TileSchedule schedule(Date{0});
    schedule.answered(Date{1000}, Date{1300});
    schedule.clockChanged(Date{1100});
    EXPECT_EQ(schedule.due(), Date{1300});
    schedule.clockChanged(Date{5000});
    EXPECT_EQ(schedule.due(), Date{1300});
    schedule.clockChanged(Date{999});
    EXPECT_EQ(schedule.due(), Date{999});
}

} // namespace
} // namespace host
