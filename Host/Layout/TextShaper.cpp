#include "Host/Layout/TextShaper.h"

#include <algorithm>

namespace host {

const MeasuredText& TextShaper::ellipsis(platform::Font font) {
    const auto known = std::find_if(ellipses_.begin(), ellipses_.end(), [&](const auto& e) { return e.first == font; });
    if (known != ellipses_.end()) {
        return known->second;
    }
    return ellipses_.emplace_back(font, measurer_.measure({.text = "…", .font = font})).second;
}

} // namespace host
