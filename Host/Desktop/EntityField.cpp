#include "Host/Desktop/EntityField.h"

#include "Host/Desktop/Labels.h"
#include "Platform/Foundation/JsonWriter.h"
#include "Platform/Foundation/Localization.h"

#include <algorithm>

namespace host {

using platform::localized;

namespace {

constexpr int listHeight = 200;
/// Whoever sees this many types another letter.
constexpr std::size_t greatestCount = 500;

} // namespace

EntityField::EntityField(HostApplication& host, Instance instance, const ParameterInfo& parameter, std::string current,
                         Choose choose)
    : host_(host), instance_(std::move(instance)), parameter_(parameter.name), current_(std::move(current)),
      choose_(std::move(choose)), box_(GTK_WIDGET(g_object_ref_sink(gtk_box_new(GTK_ORIENTATION_VERTICAL, 6)))),
      search_(gtk_search_entry_new()), list_(gtk_list_box_new()) {
    GtkWidget* label = gtk_label_new(parameter.title.c_str());
    gtk_label_set_xalign(GTK_LABEL(label), 0);
    gtk_label_set_mnemonic_widget(GTK_LABEL(label), list_);
    gtk_entry_set_placeholder_text(GTK_ENTRY(search_), localized("Search").c_str());
    atk_object_set_name(gtk_widget_get_accessible(search_), localized("Search").c_str());
    atk_object_set_name(gtk_widget_get_accessible(list_), parameter.title.c_str());
    GtkWidget* scroller = gtk_scrolled_window_new(nullptr, nullptr);
    gtk_scrolled_window_set_policy(GTK_SCROLLED_WINDOW(scroller), GTK_POLICY_NEVER, GTK_POLICY_AUTOMATIC);
    gtk_scrolled_window_set_min_content_height(GTK_SCROLLED_WINDOW(scroller), listHeight);
    gtk_scrolled_window_set_shadow_type(GTK_SCROLLED_WINDOW(scroller), GTK_SHADOW_IN);
    gtk_container_add(GTK_CONTAINER(scroller), list_);
    GtkWidget* nothing = makeNote(localized("Nothing found"));
    g_object_set(nothing, "margin", 12, nullptr);
    gtk_widget_show(nothing);
    gtk_list_box_set_placeholder(GTK_LIST_BOX(list_), nothing);
    for (GtkWidget* each : {label, search_, scroller}) {
        gtk_box_pack_start(GTK_BOX(box_.get()), each, each == scroller, each == scroller, 0);
    }
    connect<&EntityField::searched>(search_, "search-changed", this);
    connect<&EntityField::selected>(list_, "row-selected", this);
    ask("");
}

EntityField::~EntityField() {
    g_signal_handlers_disconnect_by_data(search_, this);
    g_signal_handlers_disconnect_by_data(list_, this);
}

void EntityField::searched() {
    ask(gtk_entry_get_text(GTK_ENTRY(search_)));
}

void EntityField::ask(const std::string& matching) {
    std::string params;
    platform::JsonWriter out(params);
    out.beginObject().member("kind", instance_.kind).member("parameter", parameter_);
    if (!matching.empty()) {
        out.member("matching", matching);
    }
    out.endObject();
    host_.request(instance_.extension, "options", params,
                  lifetime_.weakly([this, isWhole = matching.empty(), number = ++questions_](const auto& result) {
                      const auto options = result ? readOptions(*result) : platform::Unexpected{result.error()};
                      if (options && number == questions_) {
                          list(*options, isWhole);
                      }
                  }));
}

void EntityField::list(const OptionsInfo& options, bool isWhole) {
    isListing_ = true;
    gtk_container_foreach(
        GTK_CONTAINER(list_), [](GtkWidget* row, gpointer /*unused*/) { gtk_widget_destroy(row); }, nullptr);
    ids_.clear();
    const auto isCurrent = [this](const ChoiceInfo& choice) { return choice.id == current_; };
    const bool isThere =
        isCurrent(options.defaultChoice) || std::any_of(options.options.begin(), options.options.end(), isCurrent);
    if (isWhole && !isThere && !current_.empty()) {
        addRow({current_, current_}, false);
    }
    const auto isDefault = [&](const ChoiceInfo& choice) { return choice.id == options.defaultChoice.id; };
    if (isWhole && std::none_of(options.options.begin(), options.options.end(), isDefault)) {
        addRow(options.defaultChoice, true);
    }
    for (const ChoiceInfo& choice : options.options) {
        if (ids_.size() < greatestCount) {
            addRow(choice, true);
        }
    }
    gtk_widget_show_all(list_);
    isListing_ = false;
}

void EntityField::addRow(const ChoiceInfo& choice, bool isThere) {
    const std::string title = isThere ? choice.title : choice.title + localized(" (no longer there)");
    GtkWidget* label = gtk_label_new(title.c_str());
    gtk_label_set_xalign(GTK_LABEL(label), 0);
    gtk_label_set_ellipsize(GTK_LABEL(label), PANGO_ELLIPSIZE_END);
    g_object_set(label, "margin", 6, nullptr);
    gtk_list_box_insert(GTK_LIST_BOX(list_), label, -1);
    ids_.push_back(choice.id);
    if (choice.id == current_) {
        const int last = static_cast<int>(ids_.size()) - 1;
        gtk_list_box_select_row(GTK_LIST_BOX(list_), gtk_list_box_get_row_at_index(GTK_LIST_BOX(list_), last));
    }
}

void EntityField::selected(GtkListBoxRow* row) {
    if (isListing_ || row == nullptr) {
        return;
    }
    const std::string id = ids_[static_cast<std::size_t>(gtk_list_box_row_get_index(row))];
    if (id != current_) {
        current_ = id;
        choose_(id);
    }
}

} // namespace host
