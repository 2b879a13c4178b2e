// The gallery's page: its widgets' pictures, light beside dark, each on a ground of its own.
#pragma once

#include "Host/Connection/Messages.h"
#include "Host/Drawing/Appearance.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace host {

class GalleryPage {
  public:
    explicit GalleryPage(std::vector<ColorScheme> schemes) : schemes_(std::move(schemes)) {}

    void addWidget(const WidgetInfo& widget) { widgets_.push_back(widget); }

    std::string html() const;

    /// The name of a picture's file beside the page.
    static std::string pictureName(std::string_view kind, std::string_view family, ColorScheme scheme);

  private:
    std::vector<ColorScheme> schemes_;
    std::vector<WidgetInfo> widgets_;
};

} // namespace host
