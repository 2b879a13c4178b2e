// The gallery's page: its widgets' pictures, light and dark side by side, each on a ground of its own.
#pragma once

#include "Host/Connection/Messages.h"
#include "Host/Drawing/Appearance.h"

#include <string>
#include <string_view>
#include <vector>

namespace host {

class GalleryPage {
  public:
    void addWidget(const WidgetInfo& widget) { widgets_.push_back(widget); }

    std::string html() const;

    /// The name of a picture's file beside the page.
    static std::string pictureName(std::string_view kind, std::string_view family, ColorScheme scheme);

  private:
    std::vector<WidgetInfo> widgets_;
};

} // namespace host
