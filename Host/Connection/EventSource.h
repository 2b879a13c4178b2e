// A source of GLib's main loop: descriptors and a deadline that are waited for together, until this is destroyed.
//
// It belongs to the default main context, and is called after what draws. One thread.
#pragma once

#include <glib.h>

#include <chrono>
#include <functional>
#include <map>
#include <optional>

namespace host {

using SteadyTime = std::chrono::steady_clock::time_point;

class EventSource {
  public:
    /// `dispatch` is called when a descriptor is ready or the deadline has passed. It must not destroy this, and must
    /// set the deadline anew.
    explicit EventSource(std::function<void()> dispatch);
    EventSource(const EventSource&) = delete;
    EventSource& operator=(const EventSource&) = delete;
    ~EventSource();

    /// Waits for `condition` on the descriptor, in place of what was waited for on it before; for nothing if it is 0,
    /// which must be said before the descriptor is closed.
    void watch(int descriptor, GIOCondition condition);
    /// Whether the descriptor is ready, in `dispatch`.
    bool isReady(int descriptor) const;

    /// Nothing: only the descriptors are waited for.
    void setDeadline(std::optional<SteadyTime> deadline);

  private:
    struct Source;
    std::function<void()> dispatch_;
    GSource* source_;
    /// GLib's tags by descriptor.
    std::map<int, gpointer> tags_;
};

} // namespace host
