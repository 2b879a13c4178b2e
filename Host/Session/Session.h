// The core of a host that runs day and night: keeps every tile's entry up to date, and every extension in its bounds.
//
// It has no loop and no timer of its own: its owner waits, for the descriptors, for the deadline by the steady clock
// and for the date by the wall clock that it names, and calls `step` whenever one of them is there.
//
//  - A tile is asked for when it is due (see TileSchedule.h). Its extension is started for that if it does not run, all
//    its due tiles are asked for together, and it is told to leave when it has had nothing to do for five seconds.
//  - An extension that ends, is silent for too long (Timeouts.h), floods or speaks nonsense is ended. Its tiles keep
//    their entries and are tried again, each by its schedule; other extensions' tiles do not notice.
//  - A tile is asked for, too, when one of the files changes that its answer names (see FileWatcher.h). An answer that
//    came while such a file was being written is passed over, so that half a file is never shown.
//  - An entry that is equal to the one before is no news.
//
// One thread.
#pragma once

#include "Host/Connection/Manifest.h"
#include "Host/Session/FileWatcher.h"
#include "Host/Session/RunningExtension.h"
#include "Host/Session/Tile.h"
#include "Platform/Foundation/Clock.h"
#include "Platform/Foundation/Expected.h"

#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace host {

/// What has changed of a tile.
enum class TileUpdate {
    /// How its last reload went, or when the next one is due.
    status,
    /// Its entry has another view, or another address for a click; the status may have changed, too.
    entry,
};

class SessionObserver {
  public:
    virtual ~SessionObserver() = default;
    /// Called once for each answer or failure, and when the date of the tile's next entry has come.
    virtual void tileUpdated(const Tile& tile, TileUpdate update) = 0;
};

class Session {
  public:
    /// Finds the manifest of the extension with that identifier, as it is now; the error is one clear line.
    using FindManifest = std::function<platform::Expected<Manifest, std::string>(const std::string& identifier)>;
    using StartExtension = std::function<platform::Expected<ExtensionChannel, std::string>(const Manifest& manifest)>;

    /// What the session works with; the clock and the observer must outlive it.
    struct Surroundings {
        FindManifest findManifest;
        StartExtension startExtension;
        const platform::Clock& clock;
        SessionObserver& observer;
        Timeouts timeouts;
        /// The user's real home, which the paths of followed files start from; absolute.
        std::filesystem::path home;
        /// Tells, in one clear line, what does not work as it should; may be empty.
        std::function<void(const std::string& message)> warn;
    };
    explicit Session(Surroundings surroundings)
        : around_(std::move(surroundings)), files_(around_.home.lexically_normal()) {}

    /// From now on these are the tiles. New ones and those that show something else are asked for at once.
    void setTiles(const std::vector<Instance>& instances);

    /// From now on tiles are asked for in this rendering mode, by the protocol's name; at once, if it is another one.
    void setRenderingMode(const std::string& mode);

    /// Called when the tiles that were to be reloaded have their answers or have failed, with the failures in words.
    using Reloaded = std::function<void(const std::vector<std::string>& failures)>;
    /// Asks for the tiles of that kind, or all, at once. `done` may be called before this returns.
    void reload(const std::optional<std::string>& kind, Reloaded done);
    /// Asks for one tile at once, if it is there.
    void reload(InstanceId id);

    /// An answer with a result, or why there is none, in one clear line.
    using Answered = std::function<void(const platform::Expected<std::string, std::string>& answer)>;
    /// Puts a question of the user's to an extension, which is started for it if it does not run; `params` is a JSON
    /// object. `done` is called once, by `step`.
    void ask(const std::string& extension, std::string_view method, std::string_view params, Answered done);

    const Tile* tile(InstanceId id) const;
    const std::map<InstanceId, Tile>& tiles() const { return tiles_; }

    /// The wall clock was set, or its zone was changed, or the machine has slept.
    void clockChanged();

    std::vector<pollfd> awaited() const;
    std::optional<SteadyTime> deadline() const;
    std::optional<platform::Date> nextDate() const;
    /// Does what there is to do; `ready` is `awaited()` with the events that there were, or empty.
    void step(std::span<const pollfd> ready);

  private:
    struct Waiter {
        std::vector<InstanceId> pending;
        std::vector<std::string> failures;
        Reloaded done;
    };

    struct Question {
        std::string extension;
        std::string method;
        std::string params;
        Answered done;
    };

    void exchange(std::span<const pollfd> ready);
    void noticeChangedFiles();
    void takeAnswers(RunningExtension& extension);
    void bury();
    void askQuestions();
    void askForDueTiles();
    void ask(const std::string& identifier, const std::vector<Tile*>& due);
    platform::Expected<RunningExtension*, std::string> running(const std::string& identifier);
    struct Reply {
        platform::Expected<std::string, NoAnswer> answer;
        double seconds;
        const Manifest& manifest;
    };
    void finish(Ticket ticket, const Reply& reply);
    void finish(Tile& tile, const Reply& reply);
    void fail(Tile& tile, const NoAnswer& why);
    std::set<std::string> watchesOf(const Timeline& timeline, const Manifest& manifest) const;
    void followFiles();
    void tellWaiters(InstanceId id, const std::optional<std::string>& failure);

    Surroundings around_;
    FileWatcher files_;
    std::set<std::string> followed_;
    std::optional<std::string> warning_;
    std::map<InstanceId, Tile> tiles_;
    /// By the extension's identifier; those that leave, or are lost, are kept until their processes are gone.
    std::multimap<std::string, std::unique_ptr<RunningExtension>> extensions_;
    std::vector<Waiter> waiters_;
    /// Those that are still to be put, and those that are.
    std::vector<Question> questions_;
    std::map<Ticket, Answered> asked_;
    std::string renderingMode_ = Arrangement::fullColor;
    std::uint64_t lastTicket_ = 0;
};

} // namespace host
