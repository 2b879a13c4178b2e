#include "Host/Commands/X11Check.h"

#include <fmt/format.h>
#include <xcb/xcb.h>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string_view>

namespace host {
namespace {

struct Release {
    void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
    void operator()(void* reply) const { std::free(reply); } // NOLINT(*-no-malloc): as the library has it
};
template <class Reply>
using Handle = std::unique_ptr<Reply, Release>;

class Server {
  public:
    explicit Server(const std::string& display) : connection_(xcb_connect(display.c_str(), &screen_)) {}

    bool answers() const { return xcb_connection_has_error(connection_.get()) == 0; }
    int screen() const { return screen_; }

    xcb_window_t root() const {
        auto screens = xcb_setup_roots_iterator(xcb_get_setup(connection_.get()));
        for (int i = 0; i < screen_ && screens.rem > 1; ++i) {
            xcb_screen_next(&screens);
        }
        return screens.data->root;
    }

    bool isSelectionOwned(std::string_view name) const {
        const Handle<xcb_get_selection_owner_reply_t> reply(xcb_get_selection_owner_reply(
            connection_.get(), xcb_get_selection_owner(connection_.get(), atom(name)), nullptr));
        return reply && reply->owner != XCB_NONE;
    }

    std::optional<xcb_window_t> windowProperty(xcb_window_t window, std::string_view name) const {
        const auto values = numbers(window, name);
        return values.size() == 1 ? std::optional(values.front()) : std::nullopt;
    }

    bool names(xcb_window_t window, std::string_view property, std::string_view value) const {
        const auto values = numbers(window, property);
        return std::find(values.begin(), values.end(), atom(value)) != values.end();
    }

    std::string textProperty(xcb_window_t window, std::string_view name) const {
        const auto reply = property(window, name, XCB_ATOM_ANY);
        return reply ? std::string(static_cast<const char*>(xcb_get_property_value(reply.get())),
                                   static_cast<std::size_t>(xcb_get_property_value_length(reply.get())))
                     : std::string();
    }

  private:
    std::vector<std::uint32_t> numbers(xcb_window_t window, std::string_view name) const {
        const auto reply = property(window, name, XCB_ATOM_ANY);
        if (!reply || reply->format != 32) {
            return {};
        }
        const auto* first = static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get()));
        return {first, first + reply->value_len};
    }

    xcb_atom_t atom(std::string_view name) const {
        const Handle<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(
            connection_.get(),
            xcb_intern_atom(connection_.get(), 0, static_cast<std::uint16_t>(name.size()), name.data()), nullptr));
        return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
    }

    Handle<xcb_get_property_reply_t> property(xcb_window_t window, std::string_view name, xcb_atom_t type) const {
        constexpr std::uint32_t maxLength = 1024;
        const auto asked = xcb_get_property(connection_.get(), 0, window, atom(name), type, 0, maxLength);
        return Handle<xcb_get_property_reply_t>(xcb_get_property_reply(connection_.get(), asked, nullptr));
    }

    int screen_ = 0;
    Handle<xcb_connection_t> connection_;
};

/// By the window that a window manager leaves a sign of itself on; one that has gone may have left the other sign.
Findings checkWindowManager(const Server& server) {
    constexpr std::string_view sign = "_NET_SUPPORTING_WM_CHECK";
    const auto window = server.windowProperty(server.root(), sign);
    if (!window || server.windowProperty(*window, sign) != window) {
        return {Finding::note("window manager", "there is none: nobody keeps widgets under other windows",
                              "start a window manager that keeps to the desktops' conventions (EWMH)")};
    }
    const std::string name = server.textProperty(*window, "_NET_WM_NAME");
    return {Finding::ok("window manager", name.empty() ? "one that does not tell its name" : name),
            Finding::ok("windows",
                        server.names(server.root(), "_NET_SUPPORTED", "_NET_WM_WINDOW_TYPE_DESKTOP")
                            ? "X11 windows of the desktop type, under all windows"
                            : "X11 windows that the window manager leaves alone, under all windows: it knows none "
                              "of the desktop type")};
}

Finding checkCompositing(const Server& server) {
    return server.isSelectionOwned(fmt::format("_NET_WM_CM_S{}", server.screen()))
               ? Finding::ok("compositing", "a compositing manager runs")
               : Finding::note("compositing", "no compositing manager runs: widgets cannot be clear at their corners",
                               "turn compositing on in the window manager, or start a compositing manager");
}

} // namespace

Findings checkX11(const std::string& display) {
    const Server server(display);
    if (!server.answers()) {
        return {Finding::problem("compositor", fmt::format("X11, {}: cannot be reached", display),
                                 "run it inside the graphical session, with its DISPLAY and XAUTHORITY")};
    }
    Findings findings = checkWindowManager(server);
    findings.insert(findings.begin(), Finding::ok("compositor", "X11, " + display));
    findings.push_back(checkCompositing(server));
    return findings;
}

} // namespace host
