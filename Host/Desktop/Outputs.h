// The screens, by their connectors' names, and how windows are kept on the desktop.
#pragma once

#include "Host/Arrangement/Placement.h"
#include "Host/Desktop/Objects.h"
#include "Host/Desktop/Stacking.h"
#include "Host/Desktop/WaylandObjects.h"
#include "Host/Desktop/WorkArea.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace host {

struct Output {
    /// On Wayland, coordinates of desktop windows begin beside the panels, so the area begins at the bounds' corner and
    /// only its size leaves out the panels.
    Screen screen;
    /// Valid as long as the output exists.
    GdkMonitor* monitor = nullptr;
    /// Device pixels per unit of the desktop.
    double scale = 1;
    /// For surfaces at a fractional scale; null if the scale is an integer.
    const WaylandObjects* fractional = nullptr;
    /// Null if the compositor does not blur what lies behind windows.
    org_kde_kwin_blur_manager* blurManager = nullptr;
    bool operator==(const Output&) const = default;
};

class Outputs {
  public:
    /// Calls `changed` from the main loop when outputs come, go or change, and when the way of stacking changes.
    explicit Outputs(std::function<void()> changed);
    Outputs(const Outputs&) = delete;
    Outputs& operator=(const Outputs&) = delete;
    ~Outputs();

    /// Returns the outputs, the primary one first. Empty if windows cannot be kept on the desktop.
    const std::vector<Output>& all() const { return outputs_; }
    std::vector<Screen> screens() const;
    Stacking& stacking() { return stacking_; }

  private:
    struct Monitor {
        ObjectHandle<GdkMonitor> monitor;
        /// Only on Wayland.
        std::unique_ptr<WorkArea> area;
    };

    void refreshSoon();
    void refresh();
    void readMonitors();
    void watchWorkAreas();
    Output describe(int number, const Monitor& monitor) const;
    std::vector<Output> present() const;

    std::function<void()> changed_;
    Stacking stacking_;
    std::optional<WaylandObjects> wayland_;
    /// In GDK's order.
    std::vector<Monitor> monitors_;
    std::vector<Output> outputs_;
    std::pair<Stacking::Way, bool> stackingState_;
    ScheduledCall refreshing_;
    ScheduledCall watchingWorkAreas_;
};

} // namespace host
