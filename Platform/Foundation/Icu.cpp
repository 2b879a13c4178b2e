#include "Platform/Foundation/Icu.h"

#include "Platform/Foundation/IcuName.h"
#include "Platform/Foundation/LazyLibrary.h"

#include <optional>

namespace platform {

namespace {

constinit LazyLibrary commonLibrary("libicuuc.so." U_ICU_VERSION_SHORT);

std::optional<Icu> load() {
    Icu icu;
    const bool isComplete = commonLibrary.find(ICU_NAME(u_strFromUTF8WithSub), icu.strFromUtf8WithSub) &&
                            commonLibrary.find(ICU_NAME(u_strFoldCase), icu.strFoldCase) &&
                            commonLibrary.find(ICU_NAME(u_charType), icu.charType) &&
                            commonLibrary.find(ICU_NAME(unorm2_getNFCInstance), icu.getNfcInstance) &&
                            commonLibrary.find(ICU_NAME(unorm2_getNFDInstance), icu.getNfdInstance) &&
                            commonLibrary.find(ICU_NAME(unorm2_normalize), icu.normalize) &&
                            commonLibrary.find(ICU_NAME(uidna_openUTS46), icu.idnaOpenUts46) &&
                            commonLibrary.find(ICU_NAME(uidna_nameToASCII_UTF8), icu.idnaNameToAsciiUtf8);
    return isComplete ? std::optional(icu) : std::nullopt;
}

} // namespace

const Icu* Icu::shared() {
    static const std::optional<Icu> icu = load();
    return icu ? &*icu : nullptr;
}

} // namespace platform
