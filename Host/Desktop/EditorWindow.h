// The editor of a placed widget: what it is set to, made from its declared parameters alone, and what it shows then.
//
// A choice is tried in the preview at once and kept when the user is done.
#pragma once

#include "Host/Desktop/Catalog.h"
#include "Host/Desktop/DesktopSettings.h"
#include "Host/Desktop/ParameterField.h"
#include "Host/Desktop/RendererCache.h"
#include "Host/Desktop/TilePreview.h"

#include <functional>
#include <memory>
#include <vector>

namespace host {

class EditorWindow {
  public:
    /// `apply` is told what was chosen otherwise than before, when the user is done; `closed` is called at the end, and
    /// may end this. Everything else but the values must outlive this.
    EditorWindow(HostApplication& host, const WidgetInfo& widget, const Instance& instance, RendererCache& renderers,
                 const DesktopSettings& settings, std::function<void(const Settings& chosen)> apply,
                 std::function<void()> closed);
    EditorWindow(const EditorWindow&) = delete;
    EditorWindow& operator=(const EditorWindow&) = delete;
    ~EditorWindow();

    void present();

  private:
    void choose(const std::string& parameter, const std::string& id);
    void preview();
    void responded(int response);

    HostApplication& host_;
    Instance instance_;
    /// What was chosen since this was opened.
    Settings chosen_;
    std::function<void(const Settings& chosen)> apply_;
    std::function<void()> closed_;
    /// Before what is in it, which lets go of its widgets first.
    WindowHandle dialog_;
    TilePreview view_;
    std::vector<std::unique_ptr<ParameterField>> fields_;
    /// Counts previews; only the last one's answer matters.
    int previews_ = 0;
    Lifetime lifetime_;
};

} // namespace host
