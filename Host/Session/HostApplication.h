// The host of a login session: one per session bus, and one per arrangement. It runs until SIGTERM, SIGINT or the end
// of the bus.
//
// It follows the arrangement's file and accepts `callRunningHost`. Without a session bus it only follows the file.
#pragma once

#include "Host/Arrangement/ArrangementFile.h"
#include "Host/Arrangement/FileLock.h"
#include "Host/Connection/Requests.h"
#include "Host/Session/Session.h"
#include "Host/Session/WorkQueue.h"

#include <gio/gio.h>

#include <array>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace host {

class HostApplication;

/// Whether the user started the host, or the login session did.
enum class Presence { foreground, background };

/// Shows the tiles of a host's session.
class HostDisplay : public SessionObserver {
  public:
    /// Called before the arrangement is read for the first time.
    virtual void started(HostApplication& /*host*/) {}
    /// Called before the session's tiles change.
    virtual void arrangementChanged(const Arrangement& /*arrangement*/) {}
    /// Sets the position of an instance without one, if the display has positions.
    virtual void findPlace(Instance& /*instance*/) {}
    /// Called when the user starts the host again. Returns whether this showed something.
    virtual bool activate() { return false; }
    /// Called when the host ends; the last chance to save something.
    virtual void shutDown() {}
};

class HostApplication {
  public:
    struct Options {
        /// The folder of the arrangement's file; absolute.
        std::filesystem::path arrangementFolder;
        /// The user's real home; absolute.
        std::filesystem::path home;
        Session::FindManifest findManifest;
        Session::StartExtension startExtension;
        HostDisplay& display;
        /// `foreground` activates the display of a host that runs already.
        Presence presence = Presence::foreground;
    };
    explicit HostApplication(const Options& options);
    HostApplication(const HostApplication&) = delete;
    HostApplication& operator=(const HostApplication&) = delete;
    ~HostApplication();

    /// Returns the exit code: 0, or 69 at once if another host runs on this arrangement. Returns 0 if a host runs on
    /// this bus already, which then prints so.
    int run();

    /// Ends the run, with the exit code 0.
    void end();

    const Arrangement& arrangement() const { return arrangement_; }
    Session& session() { return session_; }

    /// The arrangement that was written, or why writing failed.
    using Change = platform::Outcome<ArrangementFile::Update>;
    /// Changes the arrangement after all changes before: first its file, on another thread, then the display. `done` is
    /// called afterwards on the main thread, unless the host has ended. A failure changes nothing.
    void change(ArrangementChange change, std::function<void(const Change& result)> done);
    /// Calls `work` on another thread, after all work before. `work` must own all that it uses.
    void workLater(std::function<void()> work);
    /// As `Session::request`.
    void request(const std::string& extension, std::string_view method, std::string_view params,
                 ExtensionClient::Responded responded);
    /// The same, for a request of entries.
    void requestEntries(const std::string& extension, const EntryRequest& request,
                        std::function<void(const platform::Outcome<std::vector<Entry>>& entries)> done);

  private:
    void start();
    GFileMonitor* monitor(const char* path, GCallback changed);
    void sync();
    int answer(GApplicationCommandLine* line);
    int reload(GApplicationCommandLine* line, const std::optional<std::string>& kind);
    int explain(GApplicationCommandLine* line, const std::string& id);

    std::filesystem::path folder_;
    ArrangementFile file_;
    HostDisplay& display_;
    Presence presence_;
    Arrangement arrangement_;
    bool isLoaded_ = false;
    /// Identifies the content of the arrangement's file; differs after each change.
    using Stamp = std::array<std::int64_t, 5>;
    static Stamp stampOf(const std::filesystem::path& file);
    std::optional<Stamp> stamp_;
    Session session_;
    /// host.lock: only one host at a time shows an arrangement. Commands use another lock.
    std::optional<FileLock> lock_;
    GApplication* application_;
    GFileMonitor* folderMonitor_ = nullptr;
    GFileMonitor* zoneMonitor_ = nullptr;
    /// The error of the arrangement's file, which is logged once.
    std::string lastError_;
    int exitCode_ = 0;
    WorkQueue work_;
};

} // namespace host
