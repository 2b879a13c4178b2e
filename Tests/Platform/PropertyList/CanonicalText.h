// A value as one line of text that says all there is to it, so that what two readers make of a file can be compared:
//
//   "text"  12  r0.5  true  d86400 (seconds since 2001)  <0fa0>  [ , ]  {"key": , } sorted by key  null  uid  set
//
// An integer outside of 64 signed bits is written as r with its value. reference.py writes the same.
#pragma once

#include "Platform/PropertyList/PropertyList.h"

#include <string>
#include <string_view>

namespace platform {

std::string canonicalText(const PropertyListValue& value);

/// The canonical text of what `file` holds, or "error".
std::string canonicalText(const Data& file);
std::string canonicalText(std::string_view file);

std::string quoted(std::string_view text);
std::string hexadecimal(std::string_view bytes);
/// With as many digits as it takes to tell the number from every other.
std::string shortest(double number);

} // namespace platform
