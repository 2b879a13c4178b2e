#include "Host/Session/SessionLoop.h"

#include <chrono>

namespace host {

struct SessionLoop::Source {
    GSource base;
    SessionLoop* loop;
};

SessionLoop::SessionLoop(Session& session) : session_(session) {
    static GSourceFuncs functions{nullptr, nullptr, &SessionLoop::dispatch, nullptr, nullptr, nullptr};
    source_ = g_source_new(&functions, sizeof(Source));
    reinterpret_cast<Source*>(source_)->loop = this;
    // What there is comes to the screen before what is new is asked for.
    g_source_set_priority(source_, G_PRIORITY_DEFAULT_IDLE);
    timerTag_ = g_source_add_unix_fd(source_, timer_.descriptor(), G_IO_IN);
    g_source_attach(source_, nullptr);

    GFile* zoneFile = g_file_new_for_path("/etc/localtime");
    zone_ = g_file_monitor_file(zoneFile, G_FILE_MONITOR_NONE, nullptr, nullptr);
    g_object_unref(zoneFile);
    if (zone_ != nullptr) {
        g_signal_connect(zone_, "changed", G_CALLBACK(&SessionLoop::zoneChanged), this);
    }
    arrange();
}

SessionLoop::~SessionLoop() {
    g_clear_object(&zone_);
    g_source_destroy(source_);
    g_source_unref(source_);
}

void SessionLoop::step() {
    session_.step({});
    arrange();
}

void SessionLoop::wakeSoon() {
    g_source_set_ready_time(source_, 0);
}

gboolean SessionLoop::dispatch(GSource* source, GSourceFunc /*callback*/, gpointer /*data*/) {
    reinterpret_cast<Source*>(source)->loop->wake();
    return G_SOURCE_CONTINUE;
}

void SessionLoop::zoneChanged(GFileMonitor* /*monitor*/, GFile* /*file*/, GFile* /*other*/, GFileMonitorEvent /*event*/,
                              gpointer self) {
    // Midnight is another moment now.
    auto& loop = *static_cast<SessionLoop*>(self);
    loop.session_.reload(std::nullopt, [](const auto& /*failures*/) {});
    loop.step();
}

void SessionLoop::wake() {
    if (g_source_query_unix_fd(source_, timerTag_) != 0) {
        takeTimer();
    }
    std::vector<pollfd> ready;
    for (const auto& [descriptor, tag] : tags_) {
        // GLib's conditions are those of poll.
        const auto events = static_cast<short>(g_source_query_unix_fd(source_, tag));
        ready.push_back({descriptor, 0, events});
    }
    session_.step(ready);
    arrange();
}

void SessionLoop::takeTimer() {
    if (timer_.take() == WallTimer::Event::clockSet) {
        session_.clockChanged();
    }
}

void SessionLoop::arrange() {
    std::map<int, gpointer> kept;
    for (const pollfd& descriptor : session_.awaited()) {
        const auto events = static_cast<GIOCondition>(descriptor.events);
        const auto known = tags_.find(descriptor.fd);
        if (known == tags_.end()) {
            kept.emplace(descriptor.fd, g_source_add_unix_fd(source_, descriptor.fd, events));
        } else {
            g_source_modify_unix_fd(source_, known->second, events);
            kept.insert(tags_.extract(known));
        }
    }
    for (const auto& [descriptor, tag] : tags_) {
        g_source_remove_unix_fd(source_, tag);
    }
    tags_ = std::move(kept);

    const auto deadline = session_.deadline();
    // The steady clock is the one that GLib's monotonic time has, in microseconds.
    g_source_set_ready_time(
        source_, deadline ? std::chrono::ceil<std::chrono::microseconds>(deadline->time_since_epoch()).count() : -1);
    timer_.set(session_.nextDate());
}

} // namespace host
