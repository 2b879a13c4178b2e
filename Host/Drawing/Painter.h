// Draws the items of a laid out widget, one after the other, where they stand.
#pragma once

#include "Host/Drawing/IconCache.h"
#include "Host/Drawing/Palette.h"
#include "Host/Drawing/PixelGrid.h"
#include "Host/Drawing/SymbolSet.h"
#include "Host/Drawing/TileBackground.h"
#include "Host/Drawing/Typesetter.h"
#include "Host/Layout/WidgetLayout.h"

namespace host {

/// What a picture ends up as: pixels, which small letters and symbols are fitted to, or a file of any size.
enum class Medium { pixels, vector };

/// What painters share from picture to picture.
struct RenderCaches {
    Typesetter typesetter;
    SymbolSet symbols;
    IconCache icons;
};

class Painter {
  public:
    /// `cairo` has its origin at the widget's upper left corner, and its units are the pixels of `grid`.
    Painter(cairo_t* cairo, const PixelGrid& grid, const Appearance& appearance, Medium medium, RenderCaches& caches)
        : cairo_(cairo), grid_(grid), palette_(appearance), redaction_(appearance.redaction), medium_(medium),
          caches_(caches) {}

    /// Draws the tile and everything on it.
    void paint(const WidgetLayout& layout);

    /// Draws everything on a badge's ground, which is opaque and as large as the layout, over what is there.
    void paintBadge(const WidgetLayout& layout);

  private:
    void paint(const LayoutItem& item);
    void paint(const TextItem& text, const LayoutItem& item);
    void paint(const SymbolItem& symbol, const LayoutItem& item);
    void paint(const ImageItem& image, const LayoutItem& item);
    void paint(const CircleItem& circle, const LayoutItem& item);
    void paint(const CapsuleItem& capsule, const LayoutItem& item);
    void paint(const DividerItem& divider, const LayoutItem& item);

    void paintLine(const PangoLayoutLine& line, const Rgba& color);
    void paintColoredRun(PangoLayoutRun& run, const char* text, double alpha);
    void paintBlock(const Rect& points, Rgba color);
    void fillRounded(const Rect& pixels, double radius, const Rgba& color);
    Rgba foreground(const LayoutItem& item) const;
    /// Of shapes, as a placeholder has them.
    Rgba softened(const Rgba& fill) const;
    bool isRedacted() const { return redaction_ == Redaction::placeholder; }

    cairo_t* cairo_;
    PixelGrid grid_;
    Palette palette_;
    Redaction redaction_;
    Medium medium_;
    RenderCaches& caches_;
};

} // namespace host
