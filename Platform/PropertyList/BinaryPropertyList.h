// The binary form of property lists.
//
//   "bplist0" and one more character
//   objects             each a marker byte and its content
//   offset table        for every object, by number, its offset in the file
//   trailer, 32 bytes   6 unused, 1 width of an offset, 1 width of a reference (1 to 8 bytes each),
//                       8 number of objects, 8 number of the root object, 8 offset of the offset table
//
// All numbers are big-endian. A reference is the number of an object. The markers:
//
//   00 null   08 false   09 true
//   10…14 integer of 1, 2, 4, 8, 16 bytes   22, 23 real of 4, 8 bytes   33 date
//   4n data, n bytes   5n text, n bytes of ASCII   6n text, n units of UTF-16
//   80…8F UID of 1 to 16 bytes
//   An array, n references   Cn set, n references   Dn dictionary, n references to keys and then n to values
//
// Where n is 15, the size follows as an integer object of 1, 2, 4 or 8 bytes.
#pragma once

#include "Platform/PropertyList/PropertyListTree.h"

#include <optional>

namespace platform {

/// Reads the binary property list in `file`. Returns nothing for other files, or if an object that the root reaches is
/// unknown, not before the offset table, contains itself, or is a key that is not a string. Objects with more bytes in
/// all than the file are an error, so that reading takes time in proportion to the file.
std::optional<PropertyListTree> readBinaryPropertyList(const Data& file);

} // namespace platform
