// The desktop's renderer, which is freed two seconds after its last use.
#pragma once

#include "Host/Desktop/Objects.h"
#include "Host/Drawing/Renderer.h"

#include <optional>

namespace host {

class RendererCache {
  public:
    /// Returns the renderer. Makes it if necessary, which starts to read the fonts.
    Renderer& renderer();

  private:
    /// Frees fonts, shaped texts and decoded icons, which take more memory than all finished pictures.
    void clear();

    std::optional<Renderer> renderer_;
    ScheduledCall clearing_;
};

} // namespace host
