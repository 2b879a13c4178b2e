#include "Host/Desktop/CaseField.h"

#include "Platform/Foundation/Localization.h"

namespace host {

using platform::localized;

CaseField::CaseField(const ParameterInfo& parameter, const std::string& current, Choose choose)
    : choose_(std::move(choose)), box_(GTK_WIDGET(g_object_ref_sink(gtk_box_new(GTK_ORIENTATION_HORIZONTAL, 12)))),
      combo_(gtk_combo_box_text_new()) {
    GtkComboBoxText* list = GTK_COMBO_BOX_TEXT(combo_);
    bool isKnown = false;
    for (const ChoiceInfo& choice : parameter.cases) {
        gtk_combo_box_text_append(list, choice.id.c_str(), choice.title.c_str());
        isKnown = isKnown || choice.id == current;
    }
    if (!isKnown) {
        gtk_combo_box_text_prepend(list, current.c_str(), (current + localized(" (no longer there)")).c_str());
    }
    gtk_combo_box_set_active_id(GTK_COMBO_BOX(combo_), current.c_str());
    GtkWidget* label = gtk_label_new(parameter.title.c_str());
    gtk_label_set_mnemonic_widget(GTK_LABEL(label), combo_);
    gtk_box_pack_start(GTK_BOX(box_.get()), label, FALSE, FALSE, 0);
    gtk_box_pack_end(GTK_BOX(box_.get()), combo_, FALSE, FALSE, 0);
    atk_object_set_name(gtk_widget_get_accessible(combo_), parameter.title.c_str());
    connect<&CaseField::changed>(combo_, "changed", this);
}

void CaseField::changed() {
    if (const char* id = gtk_combo_box_get_active_id(GTK_COMBO_BOX(combo_)); id != nullptr) {
        choose_(id);
    }
}

} // namespace host
