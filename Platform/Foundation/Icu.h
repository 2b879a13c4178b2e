// The functions of ICU that this project uses, loaded at first need.
//
// ICU's libraries and functions have their version in their names. The functions here have been the same in all
// versions of many years, so any version will do: first that of the headers at build time, then the nearest. Any
// thread.
#pragma once

#include <unicode/ucal.h>
#include <unicode/uchar.h>
#include <unicode/udat.h>
#include <unicode/udatpg.h>
#include <unicode/uidna.h>
#include <unicode/uloc.h>
#include <unicode/unorm2.h>
#include <unicode/ustring.h>

namespace platform {

/// Functions of the common library.
struct Icu {
    decltype(&::u_strFromUTF8WithSub) strFromUtf8WithSub = nullptr;
    decltype(&::u_strFoldCase) strFoldCase = nullptr;
    decltype(&::u_charType) charType = nullptr;
    decltype(&::unorm2_getNFCInstance) getNfcInstance = nullptr;
    decltype(&::unorm2_getNFDInstance) getNfdInstance = nullptr;
    decltype(&::unorm2_normalize) normalize = nullptr;
    decltype(&::uidna_openUTS46) idnaOpenUts46 = nullptr;
    decltype(&::uidna_nameToASCII_UTF8) idnaNameToAsciiUtf8 = nullptr;
    decltype(&::uloc_isRightToLeft) isRightToLeft = nullptr;

    /// Returns all of them, or null without ICU.
    static const Icu* shared();
};

/// Functions of the larger library, for calendars and dates. A locale that ICU does not know counts as English.
struct IcuDates {
    decltype(&::ucal_open) openCalendar = nullptr;
    decltype(&::ucal_close) closeCalendar = nullptr;
    decltype(&::ucal_setMillis) setMillis = nullptr;
    decltype(&::ucal_get) get = nullptr;
    decltype(&::udatpg_open) openPatterns = nullptr;
    decltype(&::udatpg_close) closePatterns = nullptr;
    decltype(&::udatpg_getBestPattern) getBestPattern = nullptr;
    decltype(&::udat_open) openFormat = nullptr;
    decltype(&::udat_close) closeFormat = nullptr;
    decltype(&::udat_format) format = nullptr;
    decltype(&::u_strToUTF8) strToUtf8 = nullptr;

    /// Returns all of them, or null without ICU.
    static const IcuDates* shared();
};

} // namespace platform
