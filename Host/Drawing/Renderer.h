// Draws laid out widgets into pictures.
//
// A `Renderer` measures, draws and encodes. It keeps what is worth keeping between pictures (fonts, shaped texts, decoded
// icons, buffers); dropping it lets all of that go. One thread at a time.
#pragma once

#include "Host/Drawing/Appearance.h"
#include "Host/Layout/TextMeasurer.h"
#include "Host/Layout/WidgetLayout.h"

#include <memory>
#include <string>

typedef struct _cairo cairo_t;

namespace host {

class Renderer final {
  public:
    Renderer();
    ~Renderer();
    Renderer(const Renderer&) = delete;
    Renderer& operator=(const Renderer&) = delete;

    /// What the layout of every widget that this renderer draws must be made with.
    TextMeasurer& texts();
    ImageMeasurer& images();

    /// The picture as a file of the given kind. `scale`: device pixels a point, for PNG; the vector kinds are in points.
    std::string png(const WidgetLayout& layout, const Appearance& appearance, double scale);
    std::string svg(const WidgetLayout& layout, const Appearance& appearance);
    std::string pdf(const WidgetLayout& layout, const Appearance& appearance);

    /// Draws on `cairo`, in points from its origin, tile and all. `scale` says how many device pixels a point has, for
    /// edges to fall on whole pixels.
    void draw(cairo_t* cairo, const WidgetLayout& layout, const Appearance& appearance, double scale);

  private:
    struct Parts;
    std::unique_ptr<Parts> parts_;
};

} // namespace host
