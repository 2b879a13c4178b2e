#include "Host/Layout/Measures.h"

namespace host {

Size familySize(std::string_view family) {
    if (family == "small") {
        return {170, 170};
    }
    if (family == "large") {
        return {364, 364};
    }
    if (family == "extraLarge") {
        return {752, 364};
    }
    return {364, 170};
}

TextMeasures textMeasures(platform::Font font) {
    TextMeasures measures;
    switch (font.style) {
    case platform::TextStyle::caption2:
        measures = {.size = 10, .lineHeight = 13, .weight = 500};
        break;
    case platform::TextStyle::caption:
        measures = {.size = 10, .lineHeight = 13};
        break;
    case platform::TextStyle::callout:
        measures = {.size = 12, .lineHeight = 15};
        break;
    case platform::TextStyle::headline:
        measures = {.size = 13, .lineHeight = 16, .weight = 700};
        break;
    case platform::TextStyle::title3:
        measures = {.size = 15, .lineHeight = 20};
        break;
    case platform::TextStyle::largeTitle:
        measures = {.size = 26, .lineHeight = 32};
        break;
    }
    if (font.weight == platform::FontWeight::semibold) {
        measures.weight = 600;
    }
    return measures;
}

} // namespace host
