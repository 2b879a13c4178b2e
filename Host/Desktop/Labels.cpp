#include "Host/Desktop/Labels.h"

namespace host {
namespace {

constexpr int noteWidth = 80;
constexpr double titleScale = 1.5;

} // namespace

GtkWidget* makeText(const std::string& text) {
    GtkWidget* label = gtk_label_new(text.c_str());
    gtk_label_set_xalign(GTK_LABEL(label), 0);
    gtk_label_set_line_wrap(GTK_LABEL(label), TRUE);
    gtk_label_set_max_width_chars(GTK_LABEL(label), noteWidth);
    return label;
}

GtkWidget* makeTitle(const std::string& text) {
    GtkWidget* label = makeText(text);
    PangoAttrList* attributes = pango_attr_list_new();
    pango_attr_list_insert(attributes, pango_attr_scale_new(titleScale));
    pango_attr_list_insert(attributes, pango_attr_weight_new(PANGO_WEIGHT_BOLD));
    gtk_label_set_attributes(GTK_LABEL(label), attributes);
    pango_attr_list_unref(attributes);
    return label;
}

GtkWidget* makeNote(const std::string& text) {
    GtkWidget* label = makeText(text);
    gtk_style_context_add_class(gtk_widget_get_style_context(label), GTK_STYLE_CLASS_DIM_LABEL);
    return label;
}

} // namespace host
