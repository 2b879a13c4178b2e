// The one place where the desktop draws: a renderer while there is something to draw, and nothing of it at rest.
#pragma once

#include "Host/Desktop/Objects.h"
#include "Host/Drawing/Renderer.h"

#include <optional>

namespace host {

class Studio {
  public:
    /// There is something to draw, or there soon will be.
    Renderer& renderer();

  private:
    /// Fonts, shaped texts and decoded icons take more room than all finished pictures.
    void close();

    std::optional<Renderer> renderer_;
    LaterCall closing_;
};

} // namespace host
