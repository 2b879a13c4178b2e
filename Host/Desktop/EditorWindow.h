// The editor of a placed widget: the widget itself beside what it is set to, its size and its declared parameters.
//
// A choice shows at once, and is kept when the user is done. On the main thread.
#pragma once

#include "Host/Desktop/Catalog.h"
#include "Host/Desktop/DesktopSettings.h"
#include "Host/Desktop/ParameterField.h"
#include "Host/Desktop/RendererCache.h"
#include "Host/Desktop/TilePreview.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace host {

class EditorWindow {
  public:
    struct Actions {
        /// Called when the user is done, with what was chosen since the window was opened: parameters, a family.
        std::function<void(const Settings& chosen, const std::optional<std::string>& family)> apply;
        /// Called at the end. May end the editor.
        std::function<void()> close;
    };

    /// All that is referred to but `widget` and `instance` must outlive this.
    EditorWindow(HostApplication& host, const WidgetInfo& widget, const Instance& instance, RendererCache& renderers,
                 const DesktopSettings& settings, Actions actions);
    EditorWindow(const EditorWindow&) = delete;
    EditorWindow& operator=(const EditorWindow&) = delete;
    ~EditorWindow();

    void present();
    void restyle();

  private:
    GtkWidget* makeFields(const WidgetInfo& widget);
    void showChoice();
    void arrange();
    void responded(int response);

    HostApplication& host_;
    const DesktopSettings& settings_;
    Instance instance_;
    Settings chosen_;
    std::optional<std::string> family_;
    Actions actions_;
    /// Declared before what it contains, which disconnects from its widgets first.
    WindowHandle dialog_;
    TilePreview view_;
    GtkWidget* box_;
    GtkWidget* scroller_;
    std::vector<std::unique_ptr<ParameterField>> fields_;
};

} // namespace host
