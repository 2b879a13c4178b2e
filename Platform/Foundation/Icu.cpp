#include "Platform/Foundation/Icu.h"

#include "Platform/Foundation/LazyLibrary.h"

#include <optional>
#include <string>

namespace platform {

namespace {

/// Finds functions in one of ICU's libraries, and in those that it is linked with, all of one version.
class IcuLibrary {
  public:
    IcuLibrary(const std::string& name, int version)
        : file_("lib" + name + ".so." + std::to_string(version)), suffix_("_" + std::to_string(version)),
          library_(file_.c_str()) {}

    template <typename Function>
    bool find(const std::string& name, Function*& function) {
        return library_.find((name + suffix_).c_str(), function);
    }

  private:
    std::string file_;
    std::string suffix_;
    LazyLibrary library_;
};

bool findAll(IcuLibrary& library, Icu& icu) {
    return library.find("u_strFromUTF8WithSub", icu.strFromUtf8WithSub) &&
           library.find("u_strFoldCase", icu.strFoldCase) && library.find("u_charType", icu.charType) &&
           library.find("unorm2_getNFCInstance", icu.getNfcInstance) &&
           library.find("unorm2_getNFDInstance", icu.getNfdInstance) &&
           library.find("unorm2_normalize", icu.normalize) && library.find("uidna_openUTS46", icu.idnaOpenUts46) &&
           library.find("uidna_nameToASCII_UTF8", icu.idnaNameToAsciiUtf8) &&
           library.find("uloc_isRightToLeft", icu.isRightToLeft);
}

bool findAll(IcuLibrary& library, IcuDates& icu) {
    decltype(&::uloc_setDefault) setDefault = nullptr;
    const bool isComplete =
        library.find("ucal_open", icu.openCalendar) && library.find("ucal_close", icu.closeCalendar) &&
        library.find("ucal_setMillis", icu.setMillis) && library.find("ucal_get", icu.get) &&
        library.find("udatpg_open", icu.openPatterns) && library.find("udatpg_close", icu.closePatterns) &&
        library.find("udatpg_getBestPattern", icu.getBestPattern) && library.find("udat_open", icu.openFormat) &&
        library.find("udat_close", icu.closeFormat) && library.find("udat_format", icu.format) &&
        library.find("u_strToUTF8", icu.strToUtf8) && library.find("uloc_setDefault", setDefault);
    if (isComplete) {
        UErrorCode error = U_ZERO_ERROR;
        setDefault("en_US", &error);
    }
    return isComplete;
}

/// Loads the library of that name whose version is nearest to that of the headers.
template <typename Functions>
std::optional<Functions> load(const char* name) {
    // More than ten years of versions, in both directions.
    constexpr int maxDistance = 24;
    for (int turn = 0; turn <= 2 * maxDistance; ++turn) {
        const int distance = (turn + 1) / 2;
        IcuLibrary library(name, U_ICU_VERSION_MAJOR_NUM + (turn % 2 != 0 ? distance : -distance));
        Functions functions;
        if (findAll(library, functions)) {
            return functions;
        }
    }
    return std::nullopt;
}

} // namespace

const Icu* Icu::shared() {
    static const auto icu = load<Icu>("icuuc");
    return icu ? &*icu : nullptr;
}

const IcuDates* IcuDates::shared() {
    static const auto icu = load<IcuDates>("icui18n");
    return icu ? &*icu : nullptr;
}

} // namespace platform
