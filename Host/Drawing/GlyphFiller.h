// Fills the outlines of glyphs with the exact coverage of each pixel, by FreeType: several times faster than cairo's
// own fills, which sample it. One thread at a time; the outlines are kept, within bounds, for the next text.
#pragma once

#include "Host/Drawing/Handles.h"
#include "Host/Drawing/LruCache.h"
#include "Host/Layout/Geometry.h"

#include <ft2build.h>
#include FT_OUTLINE_H
#include <type_traits>
#include <vector>

namespace host {

class GlyphFiller {
  public:
    GlyphFiller();

    /// Adds the glyph's coverage to `mask`, an alpha-only image; `origin` is in its pixels, of which a point has
    /// `scale`.
    void fill(PangoFont* font, const PangoGlyphInfo& glyph, Point origin, double scale, cairo_surface_t* mask);

  private:
    // Some versions of FreeType have them signed, some unsigned.
    using Tag = std::remove_pointer_t<decltype(FT_Outline::tags)>;
    using Index = std::remove_pointer_t<decltype(FT_Outline::contours)>;

    /// In 64ths of a pixel from the glyph's origin, upwards.
    struct Outline {
        std::vector<FT_Vector> points;
        std::vector<Tag> tags;
        std::vector<Index> contourEnds;

        void add(const cairo_path_data_t& data, int tag);
        void endContour();
    };
    struct Seek {
        PangoFont* font;
        PangoGlyph glyph;
        double scale;
        friend bool operator==(const Seek&, const Seek&) = default;
    };
    struct Key {
        ObjectHandle<PangoFont> font;
        PangoGlyph glyph;
        double scale;
        explicit operator Seek() const { return {font.get(), glyph, scale}; }
    };
    struct Hash {
        std::size_t operator()(const Seek& seek) const {
            return (std::hash<void*>()(seek.font) ^ seek.glyph) * 31 + std::hash<double>()(seek.scale);
        }
    };

    Outline& outline(PangoFont* font, PangoGlyph glyph, double scale);
    static Outline outlineOf(const cairo_path_t& path);

    std::unique_ptr<FT_LibraryRec_, Releaser<FT_Done_FreeType>> library_;
    LruCache<Key, Outline, Seek, Hash> outlines_;
};

} // namespace host
