// A value as one line of text that says all there is to it, so that what two readers make of a file can be compared:
//
//   "text"  12  r0.5  true  d86400 (seconds since 2001)  <0fa0>  [ , ]  {"key": , } sorted by key  null  uid  set
//
// An integer outside of 64 signed bits is written as r with its value. reference.py writes the same.
#pragma once

#include "Platform/PropertyList/PropertyList.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace platform {

std::string canonicalText(const PropertyListValue& value);

/// The canonical text of what `file` holds, or "error".
std::string canonicalText(const Data& file);
std::string canonicalText(std::string_view file);

std::string hexadecimal(std::string_view bytes);

/// Expects that each of the files is an error.
template <typename... Files>
void expectRefused(const Files&... files) {
    for (const std::string& file : {std::string(files)...}) {
        EXPECT_EQ(canonicalText(file), "error") << file << " (" << hexadecimal(file) << ")";
    }
}

} // namespace platform
