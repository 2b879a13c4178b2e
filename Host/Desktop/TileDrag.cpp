#include "Host/Desktop/TileDrag.h"

#include "Host/Arrangement/Snapping.h"
#include "Host/Desktop/TilePaint.h"
#include "Host/Layout/Measures.h"

namespace host {

TileDrag::TileDrag(const RenderedTile& rendered, const Rect& start, Outputs& outputs,
                   std::multimap<std::size_t, Rect> others)
    : rendered_(rendered), start_(start), outputs_(outputs), others_(std::move(others)),
      window_(DesktopWindow::Level::front, DesktopWindow::Input::none, outputs.stacking(),
              [this](cairo_t* cairo) { draw(cairo); }) {
    window_.blurBehind(roundedRegion({shadowMargin, shadowMargin, start.width, start.height},
                                     cornerRadius * start.width * rendered.scale / rendered.picture.width));
}

void TileDrag::move(Point distance) {
    if (outputs_.all().empty()) {
        return;
    }
    const Rect wanted{start_.x + distance.x, start_.y + distance.y, start_.width, start_.height};
    const std::vector<Screen> screens = outputs_.screens();
    const std::size_t output = screenAt({wanted.x + wanted.width / 2, wanted.y + wanted.height / 2}, screens);
    std::vector<Rect> neighbours;
    for (auto [each, last] = others_.equal_range(output); each != last; ++each) {
        neighbours.push_back(each->second);
    }
    place_ = {output, snapped(wanted, neighbours, screens[output].area)};
    const double outset = window_.isBlended() ? shadowMargin : 0;
    const Rect& frame = place_.frame;
    window_.put(outputs_.all()[output],
                {frame.x - outset, frame.y - outset, frame.width + 2 * outset, frame.height + 2 * outset});
}

void TileDrag::draw(cairo_t* cairo) const {
    const double outset = window_.isBlended() ? shadowMargin : 0;
    paintTile(cairo, rendered_, {outset, outset, place_.frame.width, place_.frame.height},
              window_.isBlended() ? Backdrop::transparent : Backdrop::opaque);
}

} // namespace host
