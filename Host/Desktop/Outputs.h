// The screens that are there, by their names at the graphics card, and how windows are kept on their desktops.
#pragma once

#include "Host/Desktop/Objects.h"
#include "Host/Desktop/Stacking.h"
#include "Host/Desktop/WaylandObjects.h"
#include "Host/Placement/Placement.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace host {

struct Output {
    Screen screen;
    /// Lives as long as the output is there.
    GdkMonitor* monitor = nullptr;
    /// Device pixels for each of the desktop's units.
    double scale = 1;
    /// Where the toolkit knows no such scale, what surfaces for it are made of.
    const WaylandObjects* fine = nullptr;
    bool operator==(const Output&) const = default;
};

class Outputs {
  public:
    /// `changed` is called from the main loop when there are others, or one has another place, size or scale, or
    /// windows are kept there in another way.
    explicit Outputs(std::function<void()> changed);
    Outputs(const Outputs&) = delete;
    Outputs& operator=(const Outputs&) = delete;
    ~Outputs();

    /// None where windows cannot be kept on the desktop.
    const std::vector<Output>& all() const { return outputs_; }
    std::vector<Screen> screens() const;
    Stacking& stacking() { return stacking_; }

  private:
    void noticeMonitor(GdkMonitor* monitor);
    void noticeProperty(GParamSpec* property);
    static GdkFilterReturn noticeWorkarea(GdkXEvent* event, GdkEvent* unused, gpointer self);
    void notice();
    void refresh();
    void stackingChanged();
    std::vector<Output> present() const;

    std::function<void()> changed_;
    Stacking stacking_;
    std::optional<WaylandObjects> wayland_;
    std::vector<Output> outputs_;
    std::vector<ObjectHandle<GdkMonitor>> followed_;
    LaterCall refreshing_;
};

} // namespace host
