#include "Host/Connection/EventSource.h"

namespace host {

struct EventSource::Source {
    GSource base;
    EventSource* self;
};

EventSource::EventSource(std::function<void()> dispatch) : dispatch_(std::move(dispatch)) {
    static GSourceFuncs functions{nullptr,
                                  nullptr,
                                  [](GSource* source, GSourceFunc /*callback*/, gpointer /*data*/) -> gboolean {
                                      reinterpret_cast<Source*>(source)->self->dispatch_();
                                      return G_SOURCE_CONTINUE;
                                  },
                                  nullptr,
                                  nullptr,
                                  nullptr};
    source_ = g_source_new(&functions, sizeof(Source));
    reinterpret_cast<Source*>(source_)->self = this;
    g_source_set_priority(source_, G_PRIORITY_DEFAULT_IDLE);
    g_source_attach(source_, nullptr);
}

EventSource::~EventSource() {
    g_source_destroy(source_);
    g_source_unref(source_);
}

void EventSource::watch(int descriptor, GIOCondition condition) {
    const auto known = tags_.find(descriptor);
    if (known != tags_.end() && condition == 0) {
        g_source_remove_unix_fd(source_, known->second);
        tags_.erase(known);
    } else if (known != tags_.end()) {
        g_source_modify_unix_fd(source_, known->second, condition);
    } else if (descriptor >= 0 && condition != 0) {
        tags_.emplace(descriptor, g_source_add_unix_fd(source_, descriptor, condition));
    }
}

bool EventSource::isReady(int descriptor) const {
    const auto known = tags_.find(descriptor);
    return known != tags_.end() && g_source_query_unix_fd(source_, known->second) != 0;
}

void EventSource::setDeadline(std::optional<SteadyTime> deadline) {
    // The steady clock is GLib's monotonic one, which counts microseconds.
    g_source_set_ready_time(
        source_, deadline ? std::chrono::ceil<std::chrono::microseconds>(deadline->time_since_epoch()).count() : -1);
}

} // namespace host
