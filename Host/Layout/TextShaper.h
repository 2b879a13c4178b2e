// The text measurer as the texts of one layout share it: what is the same for all of them is measured once.
#pragma once

#include "Host/Layout/TextMeasurer.h"

#include <deque>
#include <utility>

namespace host {

class TextShaper {
  public:
    explicit TextShaper(TextMeasurer& measurer) : measurer_(measurer) {}

    MeasuredText measure(const TextRequest& request) { return measurer_.measure(request); }

    /// The ellipsis alone. Good for as long as the shaper.
    const MeasuredText& ellipsis(platform::Font font);

  private:
    TextMeasurer& measurer_;
    std::deque<std::pair<platform::Font, MeasuredText>> ellipses_;
};

} // namespace host
