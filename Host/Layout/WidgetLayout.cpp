#include "Host/Layout/WidgetLayout.h"

#include "Host/Layout/ElementBuilder.h"
#include "Host/Layout/Measures.h"

#include <algorithm>

namespace host {

WidgetLayout layOut(const platform::View& view, Size size, TextMeasurer& texts, ImageMeasurer& images) {
    TextShaper shaper(texts);
    const ElementPtr root = buildElement(view, shaper, images);
    const Size offer{std::max(0.0, size.width - 2 * contentMargin), std::max(0.0, size.height - 2 * contentMargin)};
    const Size taken = root->measure(offer).size;

    WidgetLayout layout{.size = size};
    Placement placement{.layout = layout};
    root->place({(size.width - taken.width) / 2, (size.height - taken.height) / 2}, offer, placement);
    return layout;
}

} // namespace host
