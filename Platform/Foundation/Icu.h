// The functions of ICU's common library that this folder uses, loaded at first need.
//
// The library is the one of the major version that the headers at build time belong to, since ICU's functions carry
// that version in their names. Any thread.
#pragma once

#include <unicode/uchar.h>
#include <unicode/uidna.h>
#include <unicode/unorm2.h>
#include <unicode/ustring.h>

namespace platform {

struct Icu {
    decltype(&::u_strFromUTF8WithSub) strFromUtf8WithSub = nullptr;
    decltype(&::u_strFoldCase) strFoldCase = nullptr;
    decltype(&::u_charType) charType = nullptr;
    decltype(&::unorm2_getNFCInstance) getNfcInstance = nullptr;
    decltype(&::unorm2_getNFDInstance) getNfdInstance = nullptr;
    decltype(&::unorm2_normalize) normalize = nullptr;
    decltype(&::uidna_openUTS46) idnaOpenUts46 = nullptr;
    decltype(&::uidna_nameToASCII_UTF8) idnaNameToAsciiUtf8 = nullptr;

    /// All of them, or null where the machine has no such ICU.
    static const Icu* shared();
};

} // namespace platform
