#include "Host/Desktop/EditorWindow.h"

#include "Host/Desktop/Labels.h"
#include "Host/Desktop/TileMenu.h"
#include "Platform/Foundation/Localization.h"

namespace host {

using platform::localized;

namespace {

constexpr int dialogMargin = 24;
constexpr int fieldSpacing = 12;
constexpr double fieldsWidth = 320;
/// In characters, about as wide.
constexpr int noteWidth = 36;
/// The height of the window's frame and buttons.
constexpr int frameHeight = 90;

/// Makes a dialog with its buttons where the desktop has them: in the header bar or below.
GtkWidget* makeDialog() {
    gboolean usesHeader = FALSE;
    g_object_get(gtk_settings_get_default(), "gtk-dialogs-use-header", &usesHeader, nullptr);
    return GTK_WIDGET(g_object_new(GTK_TYPE_DIALOG, "use-header-bar", static_cast<int>(usesHeader), nullptr));
}

} // namespace

EditorWindow::EditorWindow(HostApplication& host, const WidgetInfo& widget, const Instance& instance,
                           RendererCache& renderers, const DesktopSettings& settings, Actions actions)
    : host_(host), settings_(settings), instance_(instance), actions_(std::move(actions)), dialog_(makeDialog()),
      view_(instance.family, widget.displayName, renderers, settings),
      box_(gtk_box_new(GTK_ORIENTATION_HORIZONTAL, dialogMargin)),
      scroller_(gtk_scrolled_window_new(nullptr, nullptr)) {
    loadWindowStyle(settings);
    GtkWindow* window = GTK_WINDOW(dialog_.get());
    gtk_window_set_title(window, widget.displayName.c_str());
    gtk_window_set_icon_name(window, g_get_prgname());
    gtk_window_set_position(window, GTK_WIN_POS_CENTER);
    gtk_window_set_resizable(window, FALSE);
    gtk_dialog_add_button(GTK_DIALOG(window), localized("Cancel").c_str(), GTK_RESPONSE_CANCEL);
    GtkWidget* done = gtk_dialog_add_button(GTK_DIALOG(window), localized("Done").c_str(), GTK_RESPONSE_OK);
    addClass(done, GTK_STYLE_CLASS_SUGGESTED_ACTION);
    gtk_dialog_set_default_response(GTK_DIALOG(window), GTK_RESPONSE_OK);

    GtkWidget* tile = gtk_box_new(GTK_ORIENTATION_VERTICAL, 0);
    addClass(tile, tileClass);
    gtk_container_add(GTK_CONTAINER(tile), view_.widget());
    g_object_set(tile, "halign", GTK_ALIGN_CENTER, "valign", GTK_ALIGN_CENTER, nullptr);
    gtk_box_pack_start(GTK_BOX(box_), tile, TRUE, TRUE, 0);
    gtk_box_pack_end(GTK_BOX(box_), makeFields(widget), FALSE, TRUE, 0);
    g_object_set(box_, "margin", dialogMargin, nullptr);
    gtk_scrolled_window_set_propagate_natural_width(GTK_SCROLLED_WINDOW(scroller_), TRUE);
    gtk_scrolled_window_set_propagate_natural_height(GTK_SCROLLED_WINDOW(scroller_), TRUE);
    gtk_container_add(GTK_CONTAINER(scroller_), box_);
    GtkWidget* content = gtk_dialog_get_content_area(GTK_DIALOG(window));
    gtk_container_set_border_width(GTK_CONTAINER(content), 0);
    gtk_box_pack_start(GTK_BOX(content), scroller_, TRUE, TRUE, 0);
    gtk_widget_show_all(content);
    connect<&EditorWindow::responded>(window, "response", this);
    showChoice();
}

EditorWindow::~EditorWindow() {
    g_signal_handlers_disconnect_by_data(dialog_.get(), this);
}

void EditorWindow::present() {
    const bool isNew = gtk_widget_get_mapped(dialog_.get()) == FALSE;
    gtk_window_present(GTK_WINDOW(dialog_.get()));
    if (isNew && !fields_.empty()) {
        // The last field is the widget's own. Unmapped widgets take no focus.
        gtk_widget_child_focus(fields_.back()->widget(), GTK_DIR_TAB_FORWARD);
    }
}

void EditorWindow::restyle() {
    loadWindowStyle(settings_);
    view_.restyle();
    arrange();
}

GtkWidget* EditorWindow::makeFields(const WidgetInfo& widget) {
    GtkWidget* box = gtk_box_new(GTK_ORIENTATION_VERTICAL, fieldSpacing);
    gtk_widget_set_size_request(box, static_cast<int>(fieldsWidth), -1);
    GtkWidget* note =
        makeNote(widget.configurationDescription.empty() ? widget.description : widget.configurationDescription);
    // The window's height follows from a fixed width.
    gtk_label_set_width_chars(GTK_LABEL(note), noteWidth);
    gtk_label_set_max_width_chars(GTK_LABEL(note), noteWidth);
    gtk_container_add(GTK_CONTAINER(box), note);
    const auto add = [&](const ParameterInfo& parameter, const std::string& current, ParameterField::Choose choose) {
        fields_.push_back(ParameterField::make(host_, instance_, parameter, current, std::move(choose)));
        const auto isTall = static_cast<gboolean>(parameter.type == "entity");
        gtk_box_pack_start(GTK_BOX(box), fields_.back()->widget(), isTall, TRUE, 0);
    };
    if (widget.families.size() > 1) {
        ParameterInfo size{
            .name = {}, .title = localized("Size"), .type = {}, .typeName = {}, .defaultId = {}, .cases = {}};
        for (const std::string& family : widget.families) {
            size.cases.push_back({family, familyTitle(family)});
        }
        add(size, instance_.family, [this](const std::string& family) {
            instance_.family = family;
            family_ = family;
            showChoice();
        });
    }
    for (const ParameterInfo& parameter : widget.parameters) {
        const auto set = instance_.configuration.find(parameter.name);
        add(parameter, set == instance_.configuration.end() ? parameter.defaultId : set->second,
            [this, name = parameter.name](const std::string& id) {
                instance_.configuration.insert_or_assign(name, id);
                chosen_.insert_or_assign(name, id);
                showChoice();
            });
    }
    return box;
}

void EditorWindow::showChoice() {
    view_.load(host_, instance_, EntryRequest::Method::timeline);
    arrange();
}

/// Puts the preview beside the fields, or above them if the screen is too narrow for both.
void EditorWindow::arrange() {
    const Size available = availableSize();
    const double fields = fieldsWidth * settings_.look().textScale;
    const bool fitsBeside = view_.size().width + fields + 3 * dialogMargin <= available.width;
    gtk_orientable_set_orientation(GTK_ORIENTABLE(box_),
                                   fitsBeside ? GTK_ORIENTATION_HORIZONTAL : GTK_ORIENTATION_VERTICAL);
    gtk_scrolled_window_set_max_content_width(GTK_SCROLLED_WINDOW(scroller_), static_cast<int>(available.width));
    gtk_scrolled_window_set_max_content_height(GTK_SCROLLED_WINDOW(scroller_),
                                               static_cast<int>(available.height) - frameHeight);
}

void EditorWindow::responded(int response) {
    if (response == GTK_RESPONSE_OK) {
        actions_.apply(chosen_, family_);
    }
    // May destroy this.
    const auto close = actions_.close;
    close();
}

} // namespace host
