// A tile's picture inside a window of the toolkit.
#pragma once

#include "Host/Connection/Messages.h"
#include "Host/Desktop/DesktopSettings.h"
#include "Host/Desktop/Studio.h"
#include "Host/Pictures/FaceMaker.h"

#include <optional>
#include <string>

namespace host {

class FaceView {
  public:
    /// Shows a placeholder at first. `studio` and `settings` must outlive this.
    FaceView(std::string family, std::string name, Studio& studio, const DesktopSettings& settings);
    FaceView(const FaceView&) = delete;
    FaceView& operator=(const FaceView&) = delete;
    ~FaceView();

    GtkWidget* widget() const { return area_.get(); }
    const Face& face() const { return face_; }
    /// Of the tile, without its shadow, in the window's units.
    Size size() const;

    void show(const Entry& entry);
    /// The look of the desktop is another.
    void restyle();

  private:
    gboolean draw(cairo_t* cairo);
    void scaleNoticed(GParamSpec* property);

    std::string family_;
    Studio& studio_;
    const DesktopSettings& settings_;
    ObjectHandle<GtkWidget> area_;
    std::optional<Entry> entry_;
    Face face_;
};

} // namespace host
