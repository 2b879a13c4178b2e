// A source of GLib's main loop that waits for descriptors and a deadline, until it is destroyed.
//
// It belongs to the default main context, with a priority below drawing. One thread.
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
    /// `dispatch` is called when a descriptor is ready or the deadline has passed. It must set the deadline again, and
    /// must not destroy this.
    explicit EventSource(std::function<void()> dispatch);
    EventSource(const EventSource&) = delete;
    EventSource& operator=(const EventSource&) = delete;
    ~EventSource();

    /// Replaces the condition of the descriptor that this waits for. 0 removes the descriptor, which is required before
    /// it is closed.
    void watch(int descriptor, GIOCondition condition);
    /// Whether the descriptor is ready. Called in `dispatch`.
    bool isReady(int descriptor) const;

    /// Replaces the deadline. Without one, this waits for the descriptors only.
    void setDeadline(std::optional<SteadyTime> deadline);

  private:
    struct Source;
    std::function<void()> dispatch_;
    GSource* source_;
    /// GLib's tags by descriptor.
    std::map<int, gpointer> tags_;
};

} // namespace host
