// The colours of a widget for an appearance.
//
// Full colour: levels of the foreground are black on light and white on dark, at the level's strength. Named colours are
// the palette's, brighter on dark.
//
// Tinted: a picture of one colour. The accent group is drawn in the tint: the desktop's accent colour, else the palette's
// blue, darkened or lightened to a contrast of 3:1 on the tile. Every other named colour is drawn in the gray of its own
// luminance, so that white text on it is as legible as on the colour. White stays white. A level in the accent group is
// the tint at the level's strength.
//
// Vibrant: for a background that shows through. Levels are stronger by a tenth and more. Named colours are half way to
// their gray.
//
// The tile covers the wallpaper almost wholly, so that no line of it runs through letters and a light tile stays white on
// a dark one. It is more translucent if the compositor blurs what shows through, and in the vibrant mode. Levels have a
// contrast of 4.5:1 and more on any wallpaper.
//
// High contrast, in any of these modes: the tile is opaque, white or nearly black. Levels are at full strength or little
// less. Named colours and the tint are darkened on light and lightened on dark until texts and symbols have 4.5:1 on the
// tile and circles 3:1. Grounds of texts are darkened until white is legible on them. Dividers and the tile's edge have
// more than 3:1. (Contrasts as in WCAG 2.)
//
// Placeholders draw blocks in the item's own colour, at a fifth of its strength.
#pragma once

#include "Host/Drawing/Appearance.h"
#include "Platform/Views/Style.h"

#include <array>

namespace host {

/// Which group an item belongs to in the modes that are not full colour.
enum class Group { plain, accent };

class Palette {
  public:
    explicit Palette(const Appearance& appearance) : appearance_(appearance) {}

    /// Returns the colour of texts and symbols.
    Rgba foreground(const platform::Foreground& foreground, Group group) const;
    /// Returns the colour of shapes directly on the tile.
    Rgba shape(platform::Color color, Group group) const;
    /// Returns the colour of shapes behind texts.
    Rgba ground(platform::Color color, Group group) const;
    Rgba divider() const;

    /// Returns the tile's background.
    Rgba tile() const;

    /// Returns a badge's background; opaque.
    Rgba badge() const;

    /// The line along the tile's inner edge.
    struct Edge {
        /// In points; at least a device pixel is drawn.
        double thickness = 0;
        Rgba color;
    };
    Edge tileEdge() const;

    /// A layer of the tile's shadow: the tile's outline, moved down by `drop` and blurred by `reach` on both sides of the
    /// edge. In points.
    struct Shadow {
        double drop = 0;
        double reach = 0;
        Rgba color;
    };
    /// Returns the wide soft layer and the tight one over it.
    std::array<Shadow, 2> shadows() const;

    /// Covers a row while the pointer is on it or presses it.
    enum class Highlight { hovered, pressed };
    Rgba highlight(Highlight highlight) const;
    /// Returns the colour of the ring around the focused part.
    Rgba focusRing() const;

    /// Returns whether pictures and coloured glyphs are drawn in grays.
    bool isGray() const { return appearance_.mode == DrawingMode::tinted; }

    /// Returns the colour of a placeholder's block for an item of the given colour.
    static Rgba redacted(Rgba color);

  private:
    Rgba level(platform::ForegroundLevel level) const;
    Rgba named(platform::Color color) const;
    Rgba tint() const;
    /// Returns the colour in the mode, without regard to contrast.
    Rgba plain(platform::Color color, Group group) const;
    bool isHigh() const { return appearance_.contrast == Contrast::high; }
    /// Returns the colour, darkened or lightened until it has that contrast on the tile.
    Rgba standingOut(const Rgba& color, double contrast) const;

    Appearance appearance_;
};

/// Returns the component of the gray with the same relative luminance in sRGB.
double grayOf(const Rgba& color);

/// Returns the contrast of two opaque colours: from 1 to 21.
double contrastBetween(const Rgba& a, const Rgba& b);

} // namespace host
