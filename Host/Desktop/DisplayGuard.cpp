#include "Host/Desktop/DisplayGuard.h"

#include <gdk/gdkwayland.h>
#include <gdk/gdkx.h>
#include <wayland-client-core.h>

#include <X11/Xlib.h>

#include <cerrno>
#include <cstdlib>
#include <poll.h>
#include <unistd.h>

namespace host {
namespace {

/// Null on X.
wl_display* waylandDisplayOf(GdkDisplay* display) {
    return GDK_IS_WAYLAND_DISPLAY(display) != FALSE ? gdk_wayland_display_get_wl_display(display) : nullptr;
}

/// What is to be done when Xlib finds its server gone in the middle of a request, from which there is no way back.
std::function<void()>* lastDeed = nullptr;

int serverLost(Display* /*display*/) {
    if (lastDeed != nullptr) {
        (*std::exchange(lastDeed, nullptr))();
    }
    _exit(EXIT_SUCCESS);
}

} // namespace

struct DisplayGuard::Source {
    GSource base;
    DisplayGuard* guard;
    wl_display* wayland;
    int connection;
    gpointer tag;
};

DisplayGuard::DisplayGuard(std::function<void()> gone) : gone_(std::move(gone)) {
    static GSourceFuncs functions{
        &DisplayGuard::prepare, &DisplayGuard::check, &DisplayGuard::dispatch, nullptr, nullptr, nullptr};
    source_ = g_source_new(&functions, sizeof(Source));
    auto* source = reinterpret_cast<Source*>(source_);
    source->guard = this;
    GdkDisplay* display = gdk_display_get_default();
    source->wayland = waylandDisplayOf(display);
    source->connection = source->wayland != nullptr ? wl_display_get_fd(source->wayland)
                                                    : ConnectionNumber(gdk_x11_display_get_xdisplay(display));
    // Nothing but the end, which is always told.
    source->tag = g_source_add_unix_fd(source_, source->connection, GIOCondition{});
    // Whoever is looked at earlier and is ready keeps the others from being looked at.
    g_source_set_priority(source_, 2 * G_PRIORITY_HIGH);
    g_source_attach(source_, nullptr);
    lastDeed = &gone_;
    XSetIOErrorHandler(&serverLost);
}

DisplayGuard::~DisplayGuard() {
    lastDeed = nullptr;
    g_source_destroy(source_);
    g_source_unref(source_);
}

/// Also when the server went since the last wait: the toolkit is about to write to it. On Wayland what there is to
/// write is sent here, in case it goes at this very moment.
gboolean DisplayGuard::prepare(GSource* source, gint* timeout) {
    *timeout = -1;
    const auto* self = reinterpret_cast<Source*>(source);
    pollfd connection{self->connection, 0, 0};
    const bool isGone = poll(&connection, 1, 0) > 0;
    const bool isGoing = !isGone && self->wayland != nullptr && wl_display_flush(self->wayland) < 0 && errno != EAGAIN;
    return static_cast<gboolean>(isGone || isGoing);
}

gboolean DisplayGuard::check(GSource* source) {
    const auto* self = reinterpret_cast<Source*>(source);
    return static_cast<gboolean>((g_source_query_unix_fd(source, self->tag) & (G_IO_HUP | G_IO_ERR)) != 0);
}

gboolean DisplayGuard::dispatch(GSource* source, GSourceFunc /*callback*/, gpointer /*data*/) {
    lastDeed = nullptr;
    reinterpret_cast<Source*>(source)->guard->gone_();
    // The loop is to end with this turn; the toolkit must not get another.
    return G_SOURCE_CONTINUE;
}

} // namespace host
