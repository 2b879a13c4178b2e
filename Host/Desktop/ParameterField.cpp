#include "Host/Desktop/ParameterField.h"

#include "Host/Connection/Requests.h"
#include "Host/Desktop/Labels.h"
#include "Platform/Foundation/Localization.h"

#include <algorithm>
#include <vector>

namespace host {

using platform::localized;

namespace {

constexpr int listHeight = 200;
/// With more rows, users type another letter.
constexpr std::size_t maxRows = 500;

std::string missing(const std::string& title) {
    return title + localized(" (no longer there)");
}

class CaseField final : public ParameterField {
  public:
    CaseField(const ParameterInfo& parameter, const std::string& current, Choose choose)
        : ParameterField(GTK_ORIENTATION_HORIZONTAL, 12, std::move(choose)), combo_(gtk_combo_box_text_new()) {
        GtkComboBoxText* list = GTK_COMBO_BOX_TEXT(combo_);
        bool isKnown = false;
        for (const ChoiceInfo& choice : parameter.cases) {
            gtk_combo_box_text_append(list, choice.id.c_str(), choice.title.c_str());
            isKnown = isKnown || choice.id == current;
        }
        if (!isKnown) {
            gtk_combo_box_text_prepend(list, current.c_str(), missing(current).c_str());
        }
        gtk_combo_box_set_active_id(GTK_COMBO_BOX(combo_), current.c_str());
        addLabel(parameter.title, combo_);
        gtk_box_pack_end(GTK_BOX(widget()), combo_, FALSE, FALSE, 0);
        connect<&CaseField::changed>(combo_, "changed", this);
    }
    ~CaseField() override { g_signal_handlers_disconnect_by_data(combo_, this); }

  private:
    void changed() {
        if (const char* id = gtk_combo_box_get_active_id(GTK_COMBO_BOX(combo_)); id != nullptr) {
            choose_(id);
        }
    }

    GtkWidget* combo_;
};

class EntityField final : public ParameterField {
  public:
    EntityField(HostApplication& host, Instance instance, const ParameterInfo& parameter, std::string current,
                Choose choose);
    ~EntityField() override;

  private:
    void searched() { request(gtk_entry_get_text(GTK_ENTRY(search_))); }
    void chooseFirst() { selectRow(0); }
    void stopped();
    void request(const std::string& matching);
    void list(const OptionsInfo& options, bool isWhole);
    void selected(GtkListBoxRow* row);
    void addRow(const std::string& id, const std::string& title);
    void selectRow(int index) {
        gtk_list_box_select_row(GTK_LIST_BOX(list_), gtk_list_box_get_row_at_index(GTK_LIST_BOX(list_), index));
    }

    HostApplication& host_;
    Instance instance_;
    std::string parameter_;
    std::string current_;
    GtkWidget* search_;
    GtkWidget* list_;
    /// The ids of the rows.
    std::vector<std::string> ids_;
    /// Whether the rows are being replaced.
    bool isListing_ = false;
    /// The number of requests; only the last one's response counts.
    int requests_ = 0;
    Lifetime lifetime_;
};

EntityField::EntityField(HostApplication& host, Instance instance, const ParameterInfo& parameter, std::string current,
                         Choose choose)
    : ParameterField(GTK_ORIENTATION_VERTICAL, 6, std::move(choose)), host_(host), instance_(std::move(instance)),
      parameter_(parameter.name), current_(std::move(current)), search_(gtk_search_entry_new()),
      list_(gtk_list_box_new()) {
    addLabel(parameter.title, list_);
    gtk_entry_set_placeholder_text(GTK_ENTRY(search_), localized("Search").c_str());
    setAccessibleName(search_, localized("Search"));
    gtk_box_pack_start(GTK_BOX(widget()), search_, FALSE, FALSE, 0);
    GtkWidget* scroller = gtk_scrolled_window_new(nullptr, nullptr);
    gtk_scrolled_window_set_policy(GTK_SCROLLED_WINDOW(scroller), GTK_POLICY_NEVER, GTK_POLICY_AUTOMATIC);
    gtk_scrolled_window_set_min_content_height(GTK_SCROLLED_WINDOW(scroller), listHeight);
    gtk_scrolled_window_set_shadow_type(GTK_SCROLLED_WINDOW(scroller), GTK_SHADOW_IN);
    gtk_container_add(GTK_CONTAINER(scroller), list_);
    gtk_box_pack_start(GTK_BOX(widget()), scroller, TRUE, TRUE, 0);
    GtkWidget* nothing = makeNote(localized("Nothing found"));
    g_object_set(nothing, "margin", 12, nullptr);
    gtk_widget_show(nothing);
    gtk_list_box_set_placeholder(GTK_LIST_BOX(list_), nothing);
    connect<&EntityField::searched>(search_, "search-changed", this);
    connect<&EntityField::chooseFirst>(search_, "activate", this);
    connect<&EntityField::stopped>(search_, "stop-search", this);
    connect<&EntityField::selected>(list_, "row-selected", this);
    request("");
}

EntityField::~EntityField() {
    g_signal_handlers_disconnect_by_data(search_, this);
    g_signal_handlers_disconnect_by_data(list_, this);
}

/// Escape clears the search; without one, it closes the window.
void EntityField::stopped() {
    if (gtk_entry_get_text_length(GTK_ENTRY(search_)) > 0) {
        gtk_entry_set_text(GTK_ENTRY(search_), "");
    } else {
        gtk_window_close(GTK_WINDOW(gtk_widget_get_toplevel(search_)));
    }
}

void EntityField::request(const std::string& matching) {
    std::optional<std::string_view> search;
    if (!matching.empty()) {
        search = matching;
    }
    host_.request(instance_.extension, "options",
                  paramsOf({{"kind", instance_.kind}, {"parameter", parameter_}, {"matching", search}}),
                  lifetime_.weakly([this, isWhole = matching.empty(), number = ++requests_](const auto& answer) {
                      const auto options = answer ? readOptions(*answer) : platform::Unexpected{answer.error()};
                      if (options && number == requests_) {
                          list(*options, isWhole);
                      }
                  }));
}

void EntityField::list(const OptionsInfo& options, bool isWhole) {
    isListing_ = true;
    gtk_container_foreach(
        GTK_CONTAINER(list_), [](GtkWidget* row, gpointer /*unused*/) { gtk_widget_destroy(row); }, nullptr);
    ids_.clear();
    const auto isListed = [&](const std::string& id) {
        return std::any_of(options.options.begin(), options.options.end(),
                           [&](const ChoiceInfo& choice) { return choice.id == id; });
    };
    const ChoiceInfo& usual = options.defaultChoice;
    if (isWhole && !current_.empty() && current_ != usual.id && !isListed(current_)) {
        addRow(current_, missing(current_));
    }
    if (isWhole && !isListed(usual.id)) {
        addRow(usual.id, usual.title);
    }
    for (const ChoiceInfo& choice : options.options) {
        if (ids_.size() < maxRows) {
            addRow(choice.id, choice.title);
        }
    }
    gtk_widget_show_all(list_);
    isListing_ = false;
}

void EntityField::addRow(const std::string& id, const std::string& title) {
    GtkWidget* label = gtk_label_new(title.c_str());
    gtk_label_set_xalign(GTK_LABEL(label), 0);
    gtk_label_set_ellipsize(GTK_LABEL(label), PANGO_ELLIPSIZE_END);
    g_object_set(label, "margin", 6, nullptr);
    gtk_list_box_insert(GTK_LIST_BOX(list_), label, -1);
    ids_.push_back(id);
    if (id == current_) {
        selectRow(static_cast<int>(ids_.size()) - 1);
    }
}

void EntityField::selected(GtkListBoxRow* row) {
    if (isListing_ || row == nullptr) {
        return;
    }
    const std::string& id = ids_[static_cast<std::size_t>(gtk_list_box_row_get_index(row))];
    if (id != current_) {
        current_ = id;
        choose_(id);
    }
}

} // namespace

void ParameterField::addLabel(const std::string& title, GtkWidget* named) {
    GtkWidget* label = gtk_label_new(title.c_str());
    gtk_label_set_xalign(GTK_LABEL(label), 0);
    gtk_label_set_mnemonic_widget(GTK_LABEL(label), named);
    setAccessibleName(named, title);
    gtk_box_pack_start(GTK_BOX(widget()), label, FALSE, FALSE, 0);
}

std::unique_ptr<ParameterField> ParameterField::make(HostApplication& host, const Instance& instance,
                                                     const ParameterInfo& parameter, const std::string& current,
                                                     Choose choose) {
    if (parameter.type == "entity") {
        return std::make_unique<EntityField>(host, instance, parameter, current, std::move(choose));
    }
    return std::make_unique<CaseField>(parameter, current, std::move(choose));
}

} // namespace host
