// Draws laid out widgets into pictures.
//
// A `Renderer` measures, draws and encodes. It keeps what is worth keeping between pictures (fonts, shaped texts,
// decoded icons, buffers); dropping it lets all of that go. One thread at a time.
#pragma once

#include "Host/Drawing/Appearance.h"
#include "Host/Layout/TextMeasurer.h"
#include "Host/Layout/WidgetLayout.h"

#include <memory>
#include <string>

using cairo_t = struct _cairo; // NOLINT(bugprone-reserved-identifier): the name that cairo gives it

namespace host {

class Renderer final {
  public:
    Renderer();
    ~Renderer();
    Renderer(const Renderer&) = delete;
    Renderer& operator=(const Renderer&) = delete;

    /// Reads the machine's font configuration, which is most of what a first picture takes, ahead of it. Any thread.
    static void warmUp();

    /// What the layout of every widget that this renderer draws must be made with.
    TextMeasurer& texts();
    ImageMeasurer& images();

    /// The picture as a file of the given kind: as large as the widget, clear outside the tile's round corners.
    /// `scale`: device pixels a point, for PNG; the vector kinds are in points, and the same picture is the same file.
    /// Empty if the picture would have no pixels or more than `greatestSide` in either direction.
    std::string png(const WidgetLayout& layout, const Appearance& appearance, double scale);
    std::string svg(const WidgetLayout& layout, const Appearance& appearance);
    std::string pdf(const WidgetLayout& layout, const Appearance& appearance);
    static constexpr int greatestSide = 16'384;

    /// Draws on `cairo`, in points from its origin, tile and all. `scale` says how many device pixels a point has, for
    /// edges to fall on whole pixels; it must be positive. Fastest on a surface that is clear.
    void draw(cairo_t* cairo, const WidgetLayout& layout, const Appearance& appearance, double scale);

  private:
    struct Parts;
    std::unique_ptr<Parts> parts_;
};

} // namespace host
