// Measures, breaks, cuts and shapes texts, with Pango.
//
// The font is Inter, or the machine's sans serif if Inter is missing. Other glyphs come from the machine's other fonts.
// Texts are measured in points without regard to pixels, so they are equally wide at every scale.
//
// A text is one paragraph: line breaks and other control characters in it count as blanks. Lines break between words,
// and inside a word that is wider than a line, without a hyphen.
//
// The cost of a long text is bounded: lines wider than `maxLineWidth` points and lines after the first `maxLineCount` are
// cut with an ellipsis.
//
// One thread at a time. The constructor starts to read the machine's font configuration on a thread of Pango's; the
// first measurement waits for it.
#pragma once

#include "Host/Drawing/Handles.h"
#include "Host/Layout/TextMeasurer.h"

#include <array>
#include <pango/pango.h>

namespace host {

struct ShapedText {
    /// Has the same lines as the `MeasuredText` that has this.
    ObjectHandle<PangoLayout> layout;
};

class Typesetter final : public TextMeasurer {
  public:
    static constexpr double maxLineWidth = 2048;
    static constexpr int maxLineCount = 64;

    Typesetter();

    MeasuredText measure(const TextRequest& request) override;
    double ellipsisWidth(platform::Font font) override;

  private:
    struct Face {
        FontDescriptionHandle description;
        double baseline = 0;
        double ellipsisWidth = 0;
    };

    const Face& face(platform::Font font);

    ObjectHandle<PangoFontMap> fontMap_;
    ObjectHandle<PangoContext> context_;
    std::unique_ptr<PangoAttrList, Releaser<pango_attr_list_unref>> attributes_;
    std::array<Face, 12> faces_;
};

} // namespace host
