// Notices that the display server is gone, before the toolkit does: that would end the process on the spot.
//
// Looks for it at every turn of the main loop, which costs a system call. The server may go in the middle of a turn,
// too: on X that ends the process here, with what `gone` has kept; on Wayland requests that lead nowhere do no harm.
#pragma once

#include "Host/Desktop/Objects.h"

#include <functional>

namespace host {

class DisplayGuard {
  public:
    /// `gone` is called once, from the main loop.
    explicit DisplayGuard(std::function<void()> gone);
    DisplayGuard(const DisplayGuard&) = delete;
    DisplayGuard& operator=(const DisplayGuard&) = delete;
    ~DisplayGuard();

  private:
    struct Source;
    static gboolean prepare(GSource* source, gint* timeout);
    static gboolean check(GSource* source);
    static gboolean dispatch(GSource* source, GSourceFunc callback, gpointer data);

    std::function<void()> gone_;
    GSource* source_;
};

} // namespace host
