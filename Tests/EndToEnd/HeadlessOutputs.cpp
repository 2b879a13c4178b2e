// Loaded into sway before its libraries, so that tests can do two things with headless outputs that wlroots does not
// offer: take one away and bring the same one back, by "output NAME disable" and "enable", and have pictures of it
// without the pointer.
//
// wlroots 0.15 refuses to switch headless outputs off; the refusal is passed over: the output counts as off, and sway
// withdraws it from its clients as it does with any other. Later releases switch them off, and draw the pointer by
// another function; what they do not have is never called. Calls come from sway's one thread.

#include <dlfcn.h>

struct wlr_output;
struct wlr_render_pass;
struct pixman_region32;

namespace {

// The output that the next commit is to switch off, if any.
wlr_output* leaving = nullptr;

template <typename Function>
Function* original(const char* name) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

void setEnabled(wlr_output* output, bool isEnabled) {
    original<void(wlr_output*, bool)>("wlr_output_update_enabled")(output, isEnabled);
}

} // namespace

extern "C" {

void wlr_output_enable(wlr_output* output, bool isEnabled) {
    if (!isEnabled) {
        leaving = output;
        return;
    }
    if (leaving == output) {
        leaving = nullptr;
    }
    setEnabled(output, true);
}

bool wlr_output_test(wlr_output* output) {
    return output == leaving || original<bool(wlr_output*)>("wlr_output_test")(output);
}

bool wlr_output_commit(wlr_output* output) {
    if (output != leaving) {
        return original<bool(wlr_output*)>("wlr_output_commit")(output);
    }
    leaving = nullptr;
    original<void(wlr_output*)>("wlr_output_rollback")(output);
    setEnabled(output, false);
    return true;
}

void wlr_output_render_software_cursors(wlr_output* /*output*/, pixman_region32* /*damage*/) {}

void wlr_output_add_software_cursors_to_render_pass(wlr_output* /*output*/, wlr_render_pass* /*pass*/,
                                                    pixman_region32* /*damage*/) {}

} // extern "C"
