// The options of `render` and `gallery` that say how a picture is to look.
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
    /// Keeps what was parsed, so it must outlive `command`.
    void addTo(CLI::App& command);

    /// As the protocol calls it.
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

/// "AF52DE" or "#AF52DE".
std::optional<Rgba> colorFromHex(std::string_view text);

} // namespace host
