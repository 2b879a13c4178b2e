// A shared library that is loaded at its first use and stays for good.
//
// Linking a large library costs every start of the program its relocation; loading it costs only the starts that need
// it. A machine without the library, or with one that lacks a function, is told apart by a value.
//
// Any thread: the first call loads, the others wait for it. An object may be `constinit`.
#pragma once

#include <mutex>

namespace platform {

class LazyLibrary {
  public:
    /// `fileName` as the dynamic linker looks it up, with the version of its interface: "libz.so.1".
    explicit constexpr LazyLibrary(const char* fileName) : fileName_(fileName) {}
    LazyLibrary(const LazyLibrary&) = delete;
    LazyLibrary& operator=(const LazyLibrary&) = delete;
    ~LazyLibrary() = default;

    /// Points `function` to the function that the library exports as `name`. False, and a null pointer, where there is
    /// no such library or function.
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
