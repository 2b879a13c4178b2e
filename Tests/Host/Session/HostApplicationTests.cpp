// A host without a bus, on a folder of its own.

#include "Host/Session/HostApplication.h"

#include "Host/Arrangement/FileLock.h"
#include "Tests/Support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace host {
namespace {

using Clock = std::chrono::steady_clock;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

const Addition addition{{.extension = "gone", .kind = "TipsWidget", .family = "medium"}};

/// Takes steps while a host runs: calls each until it returns true, then the next.
class Steps : public HostDisplay {
  public:
    void tileUpdated(const Tile& /*tile*/, TileUpdate /*update*/) override {}
    void arrangementChanged(const Arrangement& arrangement) override { counts.push_back(arrangement.instances.size()); }

    void take(HostApplication& host, std::deque<std::function<bool()>> steps) {
        host_ = &host;
        steps_ = std::move(steps);
        const guint timer = g_timeout_add(
            1, [](gpointer self) { return static_cast<Steps*>(self)->takeOne(); }, this);
        EXPECT_EQ(host.run(), 0);
        g_source_remove(timer);
        EXPECT_TRUE(steps_.empty()) << steps_.size() << " steps are left";
    }

    /// Of the instances, each time that the arrangement was shown.
    std::vector<std::size_t> counts;

  private:
    gboolean takeOne() {
        if (steps_.empty() || Clock::now() > deadline_) {
            host_->end();
        } else if (steps_.front()()) {
            steps_.pop_front();
        }
        return G_SOURCE_CONTINUE;
    }

    HostApplication* host_ = nullptr;
    std::deque<std::function<bool()>> steps_;
    const Clock::time_point deadline_ = Clock::now() + std::chrono::seconds(60);
};

TEST(HostApplication, ReadsAChangeOnceAndWaitsForAnothersLockBesideItsLoop) {
    setenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nowhere", 1);
    const platform::TemporaryFolder folder;
    const ArrangementFile file{platform::DiskFileSystem::shared(), folder.path("")};
    Steps steps;
    HostApplication host({.arrangementFolder = folder.path(""),
                          .home = folder.path(""),
                          .findManifest = [](const auto&) -> platform::Outcome<Manifest> {
                              return platform::Unexpected{platform::Failure{}};
                          },
                          .startExtension = nullptr,
                          .display = steps});
    std::vector<std::string> results;
    const auto change = [&](const ArrangementChange& change) {
        host.change(change, [&](const auto& result) { results.push_back(result ? "" : result.error().message); });
        return true;
    };
    std::optional<platform::Outcome<FileLock>> lock;
    steps.take(host,
               {[&] { return !steps.counts.empty(); }, [&] { return file.update(addition) && file.update(addition); },
                [&] { return steps.counts.back() == 2; },
                [&] { return lock.emplace(FileLock::tryLock(folder.path("arrangement.lock"))).operator bool(); },
                [&] { return change(addition) && change(Removal{7}); },
                [&] {
                    EXPECT_THAT(results, IsEmpty());
                    lock.reset();
                    return true;
                },
                [&] { return results.size() == 2; }, [&] { return file.update(addition).operator bool(); },
                [&] { return steps.counts.back() == 4; },
                [&] {
                    host.end();
                    return change(addition);
                }});
    EXPECT_THAT(results, ElementsAre("", "there is no widget 7; there are 1, 2, 3"));
    // The first two changes may be read as one.
    EXPECT_THAT(steps.counts, testing::AnyOf(ElementsAre(0, 2, 3, 4), ElementsAre(0, 1, 2, 3, 4)));
    EXPECT_EQ(file.load()->instances.size(), 5U) << "the end came before what was still to be written";
}

} // namespace
} // namespace host
