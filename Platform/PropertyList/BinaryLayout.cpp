#include "Platform/PropertyList/BinaryLayout.h"

namespace platform {

namespace {

bool isWidth(unsigned width) {
    return width >= 1 && width <= 8;
}

} // namespace

std::optional<BinaryLayout> BinaryLayout::read(std::string_view file) {
    if (!file.starts_with("bplist0") || file.size() < headerSize + trailerSize) {
        return std::nullopt;
    }
    BinaryLayout layout;
    layout.file_ = file;
    const std::uint64_t trailer = file.size() - trailerSize;
    layout.offsetSize_ = static_cast<unsigned char>(file[trailer + 6]);
    layout.referenceSize_ = static_cast<unsigned char>(file[trailer + 7]);
    layout.objectCount_ = layout.number(trailer + 8, 8);
    layout.rootObject_ = layout.number(trailer + 16, 8);
    layout.objectsEnd_ = layout.number(trailer + 24, 8);

    // Every object takes at least a byte, which bounds what a lying count can make us allocate.
    if (!isWidth(layout.offsetSize_) || !isWidth(layout.referenceSize_) || layout.objectsEnd_ < headerSize ||
        layout.objectsEnd_ > trailer || layout.rootObject_ >= layout.objectCount_ ||
        layout.objectCount_ > layout.objectBytes() ||
        layout.objectCount_ > (trailer - layout.objectsEnd_) / layout.offsetSize_) {
        return std::nullopt;
    }
    layout.unitSizes_ = {unknownUnit, 0, 1, 2, layout.referenceSize_, 2 * layout.referenceSize_};
    return layout;
}

} // namespace platform
