// Deleters for handles of C libraries' objects.
//
//     std::unique_ptr<DIR, Releaser<closedir>> folder(opendir(path));
#pragma once

namespace platform {

/// Calls the C function `release`.
template <auto release>
struct Releaser {
    template <class Object>
    void operator()(Object* object) const {
        release(object);
    }
};

} // namespace platform
