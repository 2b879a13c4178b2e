// Handles of GTK windows, signals that call methods, and calls by the main loop.
#pragma once

#include "Host/Drawing/Handles.h"

#include <gtk/gtk.h>

#include <memory>
#include <string>
#include <type_traits>
#include <utility>

namespace host {

/// Owns a toplevel window.
using WindowHandle = std::unique_ptr<GtkWidget, Releaser<gtk_widget_destroy>>;

/// Takes a string that the caller must free; empty for null.
inline std::string stringFromOwned(char* text) {
    const std::unique_ptr<char, Releaser<g_free>> owned(text);
    return owned ? std::string(owned.get()) : std::string();
}

/// The C function that a signal calls for a method, which does not get the sender.
template <auto Method>
struct SignalCall;
template <class Self, class Result, class... Arguments, Result (Self::*Method)(Arguments...)>
struct SignalCall<Method> {
    static Result call(gpointer /*sender*/, Arguments... arguments, gpointer self) {
        return (static_cast<Self*>(self)->*Method)(arguments...);
    }
};
template <class Self, class Result, class... Arguments, Result (Self::*Method)(Arguments...) const>
struct SignalCall<Method> {
    static Result call(gpointer /*sender*/, Arguments... arguments, gpointer self) {
        return (static_cast<const Self*>(self)->*Method)(arguments...);
    }
};

/// Calls the method at the signal. A method without parameters fits every signal. `self` must outlive `sender` or be
/// disconnected.
template <auto Method, class Self>
gulong connect(gpointer sender, const char* signal, Self* self) {
    if constexpr (std::is_invocable_v<decltype(Method), Self&>) {
        // GLib passes the signal's arguments after `self`, where a C function may ignore them.
        const auto call = +[](gpointer receiver) { return (static_cast<Self*>(receiver)->*Method)(); };
        return g_signal_connect_swapped(sender, signal, G_CALLBACK(call), self);
    } else {
        return g_signal_connect(sender, signal, G_CALLBACK(&SignalCall<Method>::call), self);
    }
}

/// Wraps calls so that they do nothing once this is destroyed, for answers that come after their receiver is gone.
class Lifetime {
  public:
    template <class Call>
    auto weakly(Call call) const {
        return [token = std::weak_ptr<int>(token_), call = std::move(call)](const auto&... arguments) {
            if (!token.expired()) {
                call(arguments...);
            }
        };
    }

  private:
    std::shared_ptr<int> token_ = std::make_shared<int>();
};

/// A call that the main loop makes once, later. Destroying this or scheduling another call cancels it.
class ScheduledCall {
  public:
    using Call = void (*)(gpointer self);

    ScheduledCall() = default;
    ScheduledCall(const ScheduledCall&) = delete;
    ScheduledCall& operator=(const ScheduledCall&) = delete;
    ~ScheduledCall() { cancel(); }

    /// Calls the method once no source of a higher priority is ready.
    template <auto Method, class Self>
    void idle(Self* self, int priority = G_PRIORITY_DEFAULT_IDLE) {
        start<Method>(g_idle_source_new(), self, priority);
    }
    /// Calls the method after so many milliseconds.
    template <auto Method, class Self>
    void after(guint milliseconds, Self* self) {
        start<Method>(g_timeout_source_new(milliseconds), self, G_PRIORITY_DEFAULT);
    }
    void cancel() {
        if (GSource* source = std::exchange(source_, nullptr); source != nullptr) {
            g_source_destroy(source);
            g_source_unref(source);
        }
    }
    bool isPending() const { return source_ != nullptr; }

  private:
    template <auto Method, class Self>
    void start(GSource* source, Self* self, int priority) {
        cancel();
        source_ = source;
        self_ = self;
        call_ = [](gpointer receiver) { (static_cast<Self*>(receiver)->*Method)(); };
        g_source_set_priority(source, priority);
        g_source_set_callback(source, &ScheduledCall::due, this, nullptr);
        g_source_attach(source, nullptr);
    }
    static gboolean due(gpointer later) {
        auto& self = *static_cast<ScheduledCall*>(later);
        const Call call = self.call_;
        gpointer receiver = self.self_;
        self.cancel();
        // May destroy this.
        call(receiver);
        return G_SOURCE_REMOVE;
    }

    GSource* source_ = nullptr;
    gpointer self_ = nullptr;
    Call call_ = nullptr;
};

} // namespace host
