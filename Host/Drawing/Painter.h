// Draws the items of a layout.
#pragma once

#include "Host/Drawing/IconCache.h"
#include "Host/Drawing/Palette.h"
#include "Host/Drawing/PixelGrid.h"
#include "Host/Drawing/SymbolSet.h"
#include "Host/Drawing/TileBackground.h"
#include "Host/Drawing/Typesetter.h"
#include "Host/Layout/WidgetLayout.h"

namespace host {

/// The kind of picture: pixels, which small letters and symbols are aligned to, or a vector file.
enum class PictureKind { pixels, vector };

/// Caches that are kept from picture to picture.
struct RenderCaches {
    Typesetter typesetter;
    SymbolSet symbols;
    IconCache icons;
};

class Painter {
  public:
    /// `cairo` has its origin at the widget's upper left corner, and its units are the pixels of `grid`.
    Painter(cairo_t* cairo, const PixelGrid& grid, const Appearance& appearance, PictureKind kind, RenderCaches& caches)
        : cairo_(cairo), grid_(grid), palette_(appearance), redaction_(appearance.redaction), kind_(kind),
          caches_(caches) {}

    /// Draws the tile and everything on it.
    void paint(const WidgetLayout& layout);

    /// Draws a badge over the picture: everything on an opaque capsule as large as the layout.
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
    /// The colour of shapes in a placeholder.
    Rgba softened(const Rgba& fill) const;
    bool isRedacted() const { return redaction_ == Redaction::placeholder; }

    cairo_t* cairo_;
    PixelGrid grid_;
    Palette palette_;
    Redaction redaction_;
    PictureKind kind_;
    RenderCaches& caches_;
};

} // namespace host
