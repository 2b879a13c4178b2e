#include "Host/Layout/Mirroring.h"

namespace host {
namespace {

platform::HorizontalAlignment mirrored(platform::HorizontalAlignment alignment) {
    switch (alignment) {
    case platform::HorizontalAlignment::leading:
        return platform::HorizontalAlignment::trailing;
    case platform::HorizontalAlignment::trailing:
        return platform::HorizontalAlignment::leading;
    case platform::HorizontalAlignment::center:
        break;
    }
    return alignment;
}

} // namespace

void mirror(WidgetLayout& layout) {
    const auto turn = [&](Rect& frame) { frame.x = layout.size.width - frame.right(); };
    for (LayoutItem& item : layout.items) {
        turn(item.frame);
        if (auto* text = std::get_if<TextItem>(&item.content)) {
            text->alignment = mirrored(text->alignment);
        }
    }
    for (LayoutLink& link : layout.links) {
        turn(link.frame);
    }
}

} // namespace host
