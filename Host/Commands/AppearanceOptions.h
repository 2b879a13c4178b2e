// The options of `render` and `gallery` for the look of a picture.
#pragma once

#include "Host/Drawing/Appearance.h"

#include <optional>
#include <string>
#include <string_view>

namespace CLI {
class App;
} // namespace CLI

namespace host {

/// --mode, --appearance, --contrast and --accent.
class AppearanceOptions {
  public:
    /// Adds the options to `command`, which this must outlive.
    void addTo(CLI::App& command);

    /// Returns the rendering mode by its name in the protocol.
    const std::string& mode() const { return mode_; }
    Appearance appearance() const;

  private:
    std::string mode_ = "fullColor";
    std::string scheme_ = "light";
    Contrast contrast_ = Contrast::normal;
    std::optional<Rgba> accent_;
};

/// Adds --contrast, which sets `contrast`.
void addContrastOption(CLI::App& command, Contrast& contrast);

/// Reads "AF52DE" or "#AF52DE"; returns nothing if the text is neither.
std::optional<Rgba> colorFromHex(std::string_view text);

} // namespace host
