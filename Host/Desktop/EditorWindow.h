// The editor of a placed widget: a preview beside its settings: size and declared parameters.
//
// The preview shows a choice at once; the widget gets it when the user is done. Called on the main thread.
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
        /// Called when the user is done, with the parameters and the family that were chosen.
        std::function<void(const Settings& chosen, const std::optional<std::string>& family)> apply;
        /// Called at the end. May destroy the editor.
        std::function<void()> close;
    };

    /// Requires that `host`, `renderers` and `settings` outlive this.
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
    /// Declared before its contents, which disconnect from their widgets before it is destroyed.
    WindowHandle dialog_;
    TilePreview view_;
    GtkWidget* box_;
    GtkWidget* scroller_;
    std::vector<std::unique_ptr<ParameterField>> fields_;
};

} // namespace host
