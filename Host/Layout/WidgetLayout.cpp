#include "Host/Layout/WidgetLayout.h"

#include "Host/Layout/ElementBuilder.h"
#include "Host/Layout/Measures.h"
#include "Platform/Views/Node.h"

#include <algorithm>

namespace host {
namespace {

/// Returns the share of the remaining width before the view: a column is aligned as it aligns its children.
double leadingShare(const platform::View& view) {
    if (const auto* link = std::get_if<platform::Link>(&view.node().content)) {
        return leadingShare(link->child);
    }
    if (const auto* accentable = std::get_if<platform::Accentable>(&view.node().content)) {
        return leadingShare(accentable->child);
    }
    const auto* column = std::get_if<platform::VStack>(&view.node().content);
    if (column == nullptr || column->alignment == platform::HorizontalAlignment::center) {
        return 0.5;
    }
    return column->alignment == platform::HorizontalAlignment::leading ? 0 : 1;
}

} // namespace

WidgetLayout layOut(const platform::View& view, Size size, TextMeasurer& texts, ImageMeasurer& images) {
    const ElementPtr root = buildElement(view, texts, images);
    const Size proposal{std::max(0.0, size.width - 2 * contentMargin), std::max(0.0, size.height - 2 * contentMargin)};
    const Size taken = root->measure(proposal).size;

    WidgetLayout layout{.size = size};
    LayoutBuilder builder{.layout = layout};
    const double left = proposal.width - taken.width;
    const double leading = left > 0 ? left * leadingShare(view) : left / 2;
    root->place({contentMargin + leading, (size.height - taken.height) / 2}, proposal, builder);
    return layout;
}

WidgetLayout layOutAlone(const platform::View& view, Size room, TextMeasurer& texts, ImageMeasurer& images) {
    const ElementPtr root = buildElement(view, texts, images);
    const Size taken = root->measure(room).size;
    WidgetLayout layout{.size = {std::min(taken.width, room.width), std::min(taken.height, room.height)}};
    LayoutBuilder builder{.layout = layout};
    root->place({}, room, builder);
    return layout;
}

} // namespace host
