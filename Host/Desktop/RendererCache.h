// The desktop's renderer, which is freed two seconds after its last use, so that nothing of it is left at rest.
#pragma once

#include "Host/Desktop/Objects.h"
#include "Host/Drawing/Renderer.h"

#include <optional>

namespace host {

class RendererCache {
  public:
    /// Makes the renderer if there is none. Also called in advance, since a new one starts to read the fonts.
    Renderer& renderer();

  private:
    /// Fonts, shaped texts and decoded icons take more memory than all finished pictures.
    void clear();

    std::optional<Renderer> renderer_;
    ScheduledCall clearing_;
};

} // namespace host
