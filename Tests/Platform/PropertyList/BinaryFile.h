// Binary property lists made by hand, valid or not.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace platform {

/// `number` in `width` bytes, big-endian; what does not fit is cut off.
inline std::string bigEndian(std::uint64_t number, unsigned width) {
    std::string bytes;
    for (unsigned index = width; index-- > 0;) {
        bytes += static_cast<char>(index < 8 ? number >> 8 * index : 0);
    }
    return bytes;
}

struct BinaryFile {
    /// Each with its marker.
    std::vector<std::string> objects;
    std::uint64_t root = 0;
    unsigned offsetSize = 2;
    unsigned referenceSize = 1;
    /// Wrong values for the trailer.
    std::optional<std::uint64_t> objectCount = std::nullopt;
    std::optional<std::uint64_t> tableOffset = std::nullopt;
    /// Wrong offsets, by number of object.
    std::vector<std::pair<std::size_t, std::uint64_t>> offsets = {};

    std::string bytes() const {
        std::string file = "bplist00";
        std::vector<std::uint64_t> offsetsInFile;
        for (const std::string& object : objects) {
            offsetsInFile.push_back(file.size());
            file += object;
        }
        for (const auto& [index, offset] : offsets) {
            offsetsInFile[index] = offset;
        }
        const std::uint64_t table = file.size();
        for (const std::uint64_t offset : offsetsInFile) {
            file += bigEndian(offset, offsetSize);
        }
        return file + std::string(6, '\0') + bigEndian(offsetSize, 1) + bigEndian(referenceSize, 1) +
               bigEndian(objectCount.value_or(objects.size()), 8) + bigEndian(root, 8) +
               bigEndian(tableOffset.value_or(table), 8);
    }
};

} // namespace platform
