// Runs a session on GLib's main loop: waits for what it names, and notices what else bears on it: the wall clock, the
// time zone.
//
// Between reloads nothing wakes up. One thread, that of the default main context.
#pragma once

#include "Host/Session/Session.h"
#include "Host/Session/WallTimer.h"

#include <gio/gio.h>

#include <map>

namespace host {

class SessionLoop {
  public:
    /// `session` must outlive this.
    explicit SessionLoop(Session& session);
    SessionLoop(const SessionLoop&) = delete;
    SessionLoop& operator=(const SessionLoop&) = delete;
    ~SessionLoop();

    /// Has the session do what there is to do, after something was asked of it from outside.
    void step();

    /// The same, from the loop: for whoever is in the middle of something.
    void wakeSoon();

  private:
    struct Source;

    static gboolean dispatch(GSource* source, GSourceFunc callback, gpointer data);
    static void zoneChanged(GFileMonitor* monitor, GFile* file, GFile* other, GFileMonitorEvent event, gpointer self);

    void wake();
    void takeTimer();
    /// Has GLib wait for what the session waits for now.
    void arrange();

    Session& session_;
    WallTimer timer_;
    GSource* source_;
    gpointer timerTag_;
    /// GLib's tags of the descriptors that are waited for, by descriptor.
    std::map<int, gpointer> tags_;
    GFileMonitor* zone_;
};

} // namespace host
