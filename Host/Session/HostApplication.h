// The host of a login session: one on the bus, one on an arrangement, running until it is told to end.
//
// It follows the arrangement's file, whoever changes it, and answers what `callRunningHost` hands it. Without a session
// bus it runs all the same, and follows the file alone.
#pragma once

#include "Host/Arrangement/ArrangementFile.h"
#include "Host/Arrangement/HostLock.h"
#include "Host/Session/Session.h"
#include "Host/Session/SessionLoop.h"

#include <gio/gio.h>

#include <filesystem>
#include <memory>
#include <string>

namespace host {

class HostApplication {
  public:
    struct Options {
        /// The folder of the arrangement's file; absolute.
        std::filesystem::path arrangementFolder;
        Session::FindManifest findManifest;
        Session::StartExtension startExtension;
        /// Told of tiles that have another view.
        SessionObserver& observer;
        Patience patience;
    };
    explicit HostApplication(const Options& options);
    HostApplication(const HostApplication&) = delete;
    HostApplication& operator=(const HostApplication&) = delete;
    ~HostApplication();

    /// Runs until SIGTERM, SIGINT or the end of the bus, and answers the exit code: 0; or 69 at once where another host
    /// runs on this arrangement. A host on this bus that runs already is no failure: it says so itself.
    int run();

  private:
    static void started(GApplication* application, gpointer self);
    static int commandLine(GApplication* application, GApplicationCommandLine* line, gpointer self);
    static void arrangementChanged(GFileMonitor* monitor, GFile* file, GFile* other, GFileMonitorEvent event,
                                   gpointer self);
    static gboolean ended(gpointer self);

    void start();
    void follow();
    void sync();
    int answer(GApplicationCommandLine* line);
    int reload(GApplicationCommandLine* line, const std::optional<std::string>& kind);
    int explain(GApplicationCommandLine* line, const std::string& id);

    std::filesystem::path folder_;
    ArrangementFile file_;
    Session session_;
    std::unique_ptr<SessionLoop> loop_;
    std::optional<HostLock> lock_;
    GApplication* application_;
    GFileMonitor* monitor_ = nullptr;
    /// The last complaint about the arrangement's file, which is made once.
    std::string complaint_;
    int exitCode_ = 0;
};

} // namespace host
