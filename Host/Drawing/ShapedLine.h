// A text as one line of glyphs.
//
// Pango cuts the text into runs of one font and shapes them. Its layouts would do so too, but at several times the
// price: they measure heights, for which they search the machine for every language's other fonts.
#pragma once

#include "Host/Drawing/Handles.h"

#include <pango/pango.h>
#include <string>
#include <string_view>
#include <vector>

namespace host {

class ShapedLine {
  public:
    /// `text` is one paragraph of valid UTF-8; it is set in the context's font.
    ShapedLine(PangoContext* context, std::string_view text);

    const std::string& text() const { return text_; }

    /// The base direction that the text takes on its own.
    PangoDirection direction() const { return direction_; }

    /// In the order they stand, from left to right. Their lengths are in units of Pango.
    const std::vector<GlyphItemHandle>& runs() const { return runs_; }

    /// In points.
    double width() const;

  private:
    std::string text_;
    PangoDirection direction_;
    std::vector<GlyphItemHandle> runs_;
};

} // namespace host
