// GObjects and widgets as values that let go of themselves, and their signals as calls of methods.
#pragma once

#include "Host/Drawing/Handles.h"

#include <gtk/gtk.h>

#include <memory>
#include <string>
#include <utility>

namespace host {

struct DestroyWindow {
    void operator()(GtkWidget* window) const { gtk_widget_destroy(window); }
};
/// A window of its own, which lives as long as this.
using WindowHandle = std::unique_ptr<GtkWidget, DestroyWindow>;

struct FreeMemory {
    void operator()(gpointer memory) const { g_free(memory); }
};
/// The text of a string that the caller is to free; empty for none.
inline std::string takeText(char* text) {
    const std::unique_ptr<char, FreeMemory> owned(text);
    return owned ? std::string(owned.get()) : std::string();
}

/// The C function that a signal calls for a method: without the object that sends it, which the receiver knows.
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

/// Has `sender` call the method at its signal. Whichever of both ends first, `self` must be disconnected or outlive it.
template <auto Method, class Self>
gulong connect(gpointer sender, const char* signal, Self* self) {
    return g_signal_connect(sender, signal, G_CALLBACK(&SignalCall<Method>::call), self);
}

/// What an answer is for may be gone when it comes: a call that is made only as long as its receiver has this.
class Lifetime {
  public:
    template <class Call>
    auto whileAlive(Call call) const {
        return [token = std::weak_ptr<int>(token_), call = std::move(call)](const auto&... arguments) {
            if (!token.expired()) {
                call(arguments...);
            }
        };
    }

  private:
    std::shared_ptr<int> token_ = std::make_shared<int>();
};

/// A call that the main loop makes later, once; not at all if this ends before or it is put off anew.
class LaterCall {
  public:
    using Call = void (*)(gpointer self);

    LaterCall() = default;
    LaterCall(const LaterCall&) = delete;
    LaterCall& operator=(const LaterCall&) = delete;
    ~LaterCall() { cancel(); }

    /// Calls the method as soon as there is nothing of greater priority to do.
    template <auto Method, class Self>
    void whenIdle(Self* self, int priority = G_PRIORITY_DEFAULT_IDLE) {
        start<Method>(g_idle_source_new(), self, priority);
    }
    /// Calls the method when so many milliseconds have passed.
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
    bool isAwaited() const { return source_ != nullptr; }

  private:
    template <auto Method, class Self>
    void start(GSource* source, Self* self, int priority) {
        cancel();
        source_ = source;
        self_ = self;
        call_ = [](gpointer receiver) { (static_cast<Self*>(receiver)->*Method)(); };
        g_source_set_priority(source, priority);
        g_source_set_callback(source, &LaterCall::due, this, nullptr);
        g_source_attach(source, nullptr);
    }
    static gboolean due(gpointer later) {
        auto& self = *static_cast<LaterCall*>(later);
        const Call call = self.call_;
        gpointer receiver = self.self_;
        self.cancel();
        // It may end what this belongs to.
        call(receiver);
        return G_SOURCE_REMOVE;
    }

    GSource* source_ = nullptr;
    gpointer self_ = nullptr;
    Call call_ = nullptr;
};

} // namespace host
