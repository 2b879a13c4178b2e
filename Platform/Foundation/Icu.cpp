#include "Platform/Foundation/Icu.h"

#include "Platform/Foundation/LazyLibrary.h"

#include <optional>

namespace platform {

namespace {

// ICU's headers define each function's name as a macro that adds the version; quoting needs one more expansion.
#define QUOTED(name) #name
#define EXPORTED_NAME(function) QUOTED(function)

constinit LazyLibrary commonLibrary("libicuuc.so." U_ICU_VERSION_SHORT);

std::optional<Icu> load() {
    Icu icu;
    const bool isComplete = commonLibrary.find(EXPORTED_NAME(u_strFromUTF8WithSub), icu.strFromUtf8WithSub) &&
                            commonLibrary.find(EXPORTED_NAME(u_strFoldCase), icu.strFoldCase) &&
                            commonLibrary.find(EXPORTED_NAME(u_charType), icu.charType) &&
                            commonLibrary.find(EXPORTED_NAME(unorm2_getNFCInstance), icu.getNfcInstance) &&
                            commonLibrary.find(EXPORTED_NAME(unorm2_getNFDInstance), icu.getNfdInstance) &&
                            commonLibrary.find(EXPORTED_NAME(unorm2_normalize), icu.normalize) &&
                            commonLibrary.find(EXPORTED_NAME(uidna_openUTS46), icu.idnaOpenUts46) &&
                            commonLibrary.find(EXPORTED_NAME(uidna_nameToASCII_UTF8), icu.idnaNameToAsciiUtf8);
    return isComplete ? std::optional(icu) : std::nullopt;
}

} // namespace

const Icu* Icu::shared() {
    static const std::optional<Icu> icu = load();
    return icu ? &*icu : nullptr;
}

} // namespace platform
