// A shared library that is loaded at its first use and never unloaded.
//
// Linking a large library costs every start of the program its relocation; loading it costs only the starts that need
// it. Any thread: the first call loads, the others wait for it. An object may be `constinit`.
#pragma once

#include <mutex>

namespace platform {

class LazyLibrary {
  public:
    /// `fileName` has the version of the interface: "libz.so.1".
    explicit constexpr LazyLibrary(const char* fileName) : fileName_(fileName) {}
    LazyLibrary(const LazyLibrary&) = delete;
    LazyLibrary& operator=(const LazyLibrary&) = delete;
    ~LazyLibrary() = default;

    /// Points `function` to the function that the library exports as `name`. Returns false, and sets a null pointer,
    /// without that library or function.
    template <typename Function>
    bool find(const char* name, Function*& function) {
        function = reinterpret_cast<Function*>(address(name));
        return function != nullptr;
    }

  private:
    void* address(const char* name);

    const char* fileName_;
    std::once_flag once_;
    void* handle_ = nullptr;
};

} // namespace platform
