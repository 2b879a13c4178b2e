// Lines of text as pixels, to be drawn in any colour wherever a whole pixel is: made once for each scale and kept,
// within bounds, for the next picture. One thread at a time.
#pragma once

#include "Host/Drawing/Desaturation.h"
#include "Host/Drawing/GlyphFiller.h"
#include "Host/Drawing/Handles.h"
#include "Host/Drawing/LruCache.h"
#include "Host/Drawing/TextKey.h"
#include "Host/Drawing/Typesetter.h"

namespace host {

/// The coverage of a pixel is its share of the glyphs' outlines, which stand to a fraction of a pixel along the line.
struct TextPicture {
    /// Alpha only: the glyphs that take the text's colour. Null where there are none.
    SurfaceHandle mask;
    /// Glyphs with colours of their own, such as emoji. Null where there are none.
    SurfaceHandle colors;
    /// Device pixels from the line's origin, its left end on the baseline, to the upper left corner of both.
    int left = 0;
    int top = 0;
};

class TextPictures {
  public:
    explicit TextPictures(Typesetter& typesetter);

    /// `scale`: device pixels a point. Good until the next call.
    const TextPicture& picture(std::string_view line, platform::Font font, double scale, Tone tone);

  private:
    Typesetter& typesetter_;
    GlyphFiller filler_;
    LruCache<TextKey, TextPicture, TextSeek, TextHash> pictures_;
};

} // namespace host
