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

class HostApplicationTest : public testing::Test, public HostDisplay {
  protected:
    HostApplicationTest() { setenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nowhere", 1); }

    void tileUpdated(const Tile& /*tile*/, TileUpdate /*update*/) override {}
    void arrangementChanged(const Arrangement& arrangement) override { counts.push_back(arrangement.instances.size()); }

    /// Runs the host. Calls each step until it returns true, then the next.
    void run(std::deque<std::function<bool()>> steps) {
        steps_ = std::move(steps);
        const auto call = [](gpointer self) { return static_cast<HostApplicationTest*>(self)->takeStep(); };
        const guint timer = g_timeout_add(1, call, this);
        host.emplace(HostApplication::Options{.arrangementFolder = folder.path(""),
                                              .home = folder.path(""),
                                              .findManifest = [](const auto&) -> platform::Outcome<Manifest> {
                                                  return platform::Unexpected{platform::Failure{}};
                                              },
                                              .startExtension = nullptr,
                                              .display = *this});
        EXPECT_EQ(host->run(), 0);
        g_source_remove(timer);
        EXPECT_TRUE(steps_.empty()) << steps_.size() << " steps are left";
        host.reset();
    }

    bool change(const ArrangementChange& change) {
        host->change(change, [this](const HostApplication::Change& result) {
            results.push_back(result ? "" : result.error().message);
        });
        return true;
    }

    const platform::TemporaryFolder folder;
    const ArrangementFile file{platform::DiskFileSystem::shared(), folder.path("")};
    /// Of the instances, each time that the arrangement was shown.
    std::vector<std::size_t> counts;
    std::vector<std::string> results;
    std::optional<HostApplication> host;

  private:
    gboolean takeStep() {
        if (!steps_.empty() && Clock::now() < deadline_) {
            if (steps_.front()()) {
                steps_.pop_front();
            }
        } else {
            host->end();
        }
        return G_SOURCE_CONTINUE;
    }

    std::deque<std::function<bool()>> steps_;
    const Clock::time_point deadline_ = Clock::now() + std::chrono::seconds(60);
};

TEST_F(HostApplicationTest, ReadsOnceWhatIsChangedOnce) {
    run({[&] { return !counts.empty(); }, [&] { return file.update(addition) && file.update(addition); },
         [&] { return counts.back() == 2; }, [&] { return change(addition); }, [&] { return counts.back() == 3; },
         [&] { return file.update(addition).operator bool(); }, [&] { return counts.back() == 4; }});
    // The first two may be read as one.
    EXPECT_THAT(counts, testing::AnyOf(ElementsAre(0, 2, 3, 4), ElementsAre(0, 1, 2, 3, 4)));
}

TEST_F(HostApplicationTest, WaitsForAnothersLockBesideItsLoop) {
    auto lock = std::make_optional(FileLock::tryLock(folder.path("arrangement.lock")));
    run({[&] { return change(addition); }, [&] { return change(Removal{7}); },
         [&] {
             EXPECT_THAT(results, IsEmpty());
             lock.reset();
             return true;
         },
         [&] { return results.size() == 2; },
         [&] {
             change(addition);
             host->end();
             return true;
         }});
    EXPECT_THAT(results, ElementsAre("", "there is no widget 7; there are 1"));
    EXPECT_THAT(counts, ElementsAre(0, 1));
    EXPECT_EQ(file.load()->instances.size(), 2U) << "the end came before what was still to be written";
}

} // namespace
} // namespace host
