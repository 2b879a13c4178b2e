#include "Host/Drawing/RenderedTile.h"

namespace host {

WidgetLayout layOut(const platform::View& view, Size size, Direction direction, Renderer& renderer) {
    WidgetLayout layout = layOut(view, size, renderer.texts(), renderer.images());
    if (direction == Direction::rightToLeft) {
        mirror(layout);
    }
    return layout;
}

RenderedTile renderTile(const platform::View& view, Size size, const TileStyle& style, Renderer& renderer) {
    const WidgetLayout layout = layOut(view, size, style.direction, renderer);
    RenderedTile rendered{.picture = renderer.pixels(layout, style.appearance, style.scale),
                          .scale = style.scale,
                          .appearance = style.appearance};
    if (style.appearance.redaction == Redaction::none) {
        rendered.items = accessibleItems(layout);
    }
    return rendered;
}

} // namespace host
