// The colours of a widget, as they follow from its appearance.
//
// Full colour: levels of the foreground are black on light and white on dark at the level's strength; named colours are
// as the palette has them, brighter on dark.
//
// Tinted: a picture of one colour. What belongs to the accent group is drawn in the tint, the palette's blue; every
// other named colour in the gray of its own luminance, so that white text stands on it as legibly as on the colour.
// White stays white in both. A level in the accent group is the tint at the level's strength.
//
// Vibrant: for a background that shows through. Levels are stronger by a tenth and more, and named colours are half way
// to their gray.
//
// Placeholders draw blocks in the item's own colour, at a fifth of its strength.
#pragma once

#include "Host/Drawing/Appearance.h"
#include "Platform/Views/Style.h"

namespace host {

/// Which group an item belongs to in the modes that are not full colour.
enum class Group { plain, accent };

class Palette {
  public:
    explicit Palette(const Appearance& appearance) : appearance_(appearance) {}

    Rgba foreground(const platform::Foreground& foreground, Group group) const;
    Rgba color(platform::Color color, Group group) const;
    Rgba divider() const;

    /// The tile's background: the tertiary fill over the tile's own, in one.
    Rgba tile() const;
    /// The line along the tile's inner edge.
    Rgba tileEdge() const;

    ColorScheme scheme() const { return appearance_.scheme; }

    /// Whether pictures and coloured glyphs are drawn in grays.
    bool isGray() const { return appearance_.mode == DrawingMode::tinted; }

    /// What stands in for something of the given colour in a placeholder.
    static Rgba redacted(Rgba color);

  private:
    Rgba level(platform::ForegroundLevel level) const;
    Rgba named(platform::Color color) const;

    Appearance appearance_;
};

/// Relative luminance of sRGB, as an equally bright gray's component.
double grayOf(const Rgba& color);

} // namespace host
