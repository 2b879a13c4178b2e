#include "Platform/Foundation/LazyLibrary.h"

#include <dlfcn.h>

namespace platform {

void* LazyLibrary::address(const char* name) {
    std::call_once(once_, [this] { handle_ = dlopen(fileName_, RTLD_LAZY | RTLD_LOCAL); });
    return handle_ != nullptr ? dlsym(handle_, name) : nullptr;
}

} // namespace platform
