#include "Host/Desktop/EditorWindow.h"

#include "Host/Connection/Requests.h"
#include "Host/Desktop/Labels.h"
#include "Platform/Foundation/Localization.h"

namespace host {

using platform::localized;

namespace {

constexpr int dialogMargin = 18;
constexpr int fieldSpacing = 12;
constexpr int leastWidth = 440;

} // namespace

EditorWindow::EditorWindow(HostApplication& host, const WidgetInfo& widget, const Instance& instance,
                           RendererCache& renderers, const DesktopSettings& settings,
                           std::function<void(const Settings& chosen)> apply, std::function<void()> closed)
    : host_(host), instance_(instance), apply_(std::move(apply)), closed_(std::move(closed)), dialog_(gtk_dialog_new()),
      view_(instance.family, widget.displayName, renderers, settings) {
    GtkWindow* window = GTK_WINDOW(dialog_.get());
    gtk_window_set_title(window, widget.displayName.c_str());
    gtk_window_set_position(window, GTK_WIN_POS_CENTER);
    gtk_window_set_resizable(window, FALSE);
    gtk_dialog_add_button(GTK_DIALOG(window), localized("Cancel").c_str(), GTK_RESPONSE_CANCEL);
    gtk_dialog_add_button(GTK_DIALOG(window), localized("Done").c_str(), GTK_RESPONSE_OK);
    gtk_dialog_set_default_response(GTK_DIALOG(window), GTK_RESPONSE_OK);

    GtkWidget* box = gtk_dialog_get_content_area(GTK_DIALOG(window));
    gtk_container_set_border_width(GTK_CONTAINER(box), dialogMargin);
    gtk_box_set_spacing(GTK_BOX(box), fieldSpacing);
    gtk_widget_set_size_request(box, leastWidth, -1);
    gtk_container_add(
        GTK_CONTAINER(box),
        makeNote(widget.configurationDescription.empty() ? widget.description : widget.configurationDescription));
    gtk_container_add(GTK_CONTAINER(box), view_.widget());
    for (const ParameterInfo& parameter : widget.parameters) {
        const auto set = instance_.configuration.find(parameter.name);
        const std::string current = set == instance_.configuration.end() ? parameter.defaultId : set->second;
        auto choose = [this, name = parameter.name](const std::string& id) { this->choose(name, id); };
        fields_.push_back(ParameterField::make(host_, instance_, parameter, current, std::move(choose)));
        gtk_container_add(GTK_CONTAINER(box), fields_.back()->widget());
    }
    gtk_widget_show_all(box);
    connect<&EditorWindow::responded>(window, "response", this);
    preview();
}

EditorWindow::~EditorWindow() {
    g_signal_handlers_disconnect_by_data(dialog_.get(), this);
}

void EditorWindow::present() {
    gtk_window_present(GTK_WINDOW(dialog_.get()));
}

void EditorWindow::choose(const std::string& parameter, const std::string& id) {
    instance_.configuration.insert_or_assign(parameter, id);
    chosen_.insert_or_assign(parameter, id);
    preview();
}

void EditorWindow::preview() {
    const EntryRequest request{.method = EntryRequest::Method::timeline,
                               .kind = instance_.kind,
                               .family = instance_.family,
                               .configuration = {instance_.configuration.begin(), instance_.configuration.end()}};
    host_.requestEntries(instance_.extension, request,
                         lifetime_.weakly([this, number = ++previews_](const auto& entries) {
                             if (entries && number == previews_) {
                                 view_.show(*entryAt(*entries, platform::SystemClock::shared().now()));
                             }
                         }));
}

void EditorWindow::responded(int response) {
    if (response == GTK_RESPONSE_OK && !chosen_.empty()) {
        apply_(chosen_);
    }
    // It may be the end of this.
    const auto closed = closed_;
    closed();
}

} // namespace host
