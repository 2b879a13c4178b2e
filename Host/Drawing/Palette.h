// The colours of a widget, as they follow from its appearance.
//
// Full colour: levels of the foreground are black on light and white on dark at the level's strength; named colours are
// as the palette has them, brighter on dark.
//
// Tinted: a picture of one colour. What belongs to the accent group is drawn in the tint: the desktop's accent colour or
// else the palette's blue, as much darker or lighter as it takes for 3:1 on the tile. Every other named colour is drawn
// in the gray of its own luminance, so that white text stands on it as legibly as on the colour. White stays white in
// both. A level in the accent group is the tint at the level's strength.
//
// Vibrant: for a background that shows through. Levels are stronger by a tenth and more, and named colours are half way
// to their gray.
//
// The tile covers the wallpaper almost wholly, so that no line of it runs through letters and a light tile stays white
// on a dark one; less where the compositor blurs what shows through, and in the vibrant mode. The levels have a
// contrast of 4.5:1 and more on any wallpaper.
//
// High contrast, in any of these modes: the tile is opaque, white or nearly black. Levels are at full strength or
// little less. Named colours and the tint are darkened on light and lightened on dark where they are too close to what
// they stand on: texts and symbols to 4.5:1 on the tile, circles to 3:1; what texts stand on is darkened until white
// reads well on it. Dividers and the tile's edge have more than 3:1. (Contrasts as in WCAG 2.)
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

    /// Of texts and symbols.
    Rgba foreground(const platform::Foreground& foreground, Group group) const;
    /// Of shapes that stand alone on the tile.
    Rgba shape(platform::Color color, Group group) const;
    /// Of shapes that texts stand on.
    Rgba ground(platform::Color color, Group group) const;
    Rgba divider() const;

    /// The tile's background.
    Rgba tile() const;

    /// What a badge on a tile stands on; opaque.
    Rgba badge() const;

    /// The line along the tile's inner edge.
    struct Edge {
        /// In points; at least a device pixel is drawn.
        double thickness = 0;
        Rgba color;
    };
    Edge tileEdge() const;

    /// A layer of the tile's shadow: that of the tile's outline, moved down by `drop`, and fading away over `reach` on
    /// both sides of it. In points.
    struct Shadow {
        double drop = 0;
        double reach = 0;
        Rgba color;
    };
    /// The wide soft one and the tight one that lies over it.
    std::array<Shadow, 2> shadows() const;

    /// What a row is covered with while the pointer is on it or presses it.
    enum class Highlight { hovered, pressed };
    Rgba highlight(Highlight highlight) const;
    /// The ring around what has the keyboard.
    Rgba focusRing() const;

    /// Whether pictures and coloured glyphs are drawn in grays.
    bool isGray() const { return appearance_.mode == DrawingMode::tinted; }

    /// What stands in for something of the given colour in a placeholder.
    static Rgba redacted(Rgba color);

  private:
    Rgba level(platform::ForegroundLevel level) const;
    Rgba named(platform::Color color) const;
    Rgba tint() const;
    /// The colour as the mode has it.
    Rgba plain(platform::Color color, Group group) const;
    bool isHigh() const { return appearance_.contrast == Contrast::high; }
    /// The colour, away from the tile's as far as it takes for that contrast.
    Rgba standingOut(const Rgba& color, double contrast) const;

    Appearance appearance_;
};

/// Relative luminance of sRGB, as an equally bright gray's component.
double grayOf(const Rgba& color);

/// How far two opaque colours stand out from each other: from 1 to 21.
double contrastBetween(const Rgba& a, const Rgba& b);

} // namespace host
