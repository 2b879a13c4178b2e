#include "Host/Pictures/FaceMaker.h"

namespace host {

WidgetLayout layOut(const platform::View& view, Size size, Direction direction, Renderer& renderer) {
    WidgetLayout layout = layOut(view, size, renderer.texts(), renderer.images());
    if (direction == Direction::rightToLeft) {
        mirror(layout);
    }
    return layout;
}

Face makeFace(const platform::View& view, Size size, const FaceStyle& style, Renderer& renderer) {
    const WidgetLayout layout = layOut(view, size, style.direction, renderer);
    Face face{.scale = style.scale, .appearance = style.appearance};
    const PixelView picture = renderer.pixels(layout, style.appearance, style.scale, face.pixels);
    face.width = static_cast<int>(picture.width);
    face.height = static_cast<int>(picture.height);
    if (style.appearance.redaction == Redaction::none) {
        face.parts = partsOf(layout);
    }
    return face;
}

} // namespace host
