#include "Host/Desktop/Labels.h"

#include "Host/Drawing/Palette.h"
#include "Host/Drawing/SymbolSet.h"
#include "Host/Layout/Measures.h"

#include <fmt/format.h>

namespace host {
namespace {

constexpr int noteWidth = 60;
constexpr double titleScale = 1.5;
constexpr int statusSymbolSize = 56;
constexpr int statusSpacing = 12;
constexpr int statusMargin = 36;
/// The maximum of a screen that a window takes. On Wayland the rest is for a panel, whose size the compositor does not
/// report.
constexpr double maxShare = 0.93;
constexpr const char* symbolKey = "symbol";

/// {0} is the radius of a tile's corners, {1} that of the ring around it, {2} the opacity of notes; {3}, {4} and {5} are
/// the shadows of a tile, of a raised one and of a pressed one. A raised tile keeps its room: what the margin loses above
/// it gains below.
constexpr const char* style = R"(
.tile, .tile:hover, .tile:active {{
    all: unset; border-radius: {0}px; box-shadow: {3};
}}
button.tile {{ margin: 3px 0 3px 0; transition: 160ms ease-out; }}
button.tile:hover {{
    margin: 0 0 6px 0; transition: 160ms ease-out; box-shadow: {4};
}}
button.tile:active {{ margin: 4px 0 2px 0; transition: 60ms; box-shadow: {5}; }}
button.tile:focus {{
    outline: 2px solid @theme_selected_bg_color; outline-offset: 3px; -gtk-outline-radius: {1}px;
}}
label.dim-label {{ opacity: {2}; }}
.gallery-sidebar, .gallery-sidebar list {{ background: none; }}
.gallery-sidebar row:not(:selected):not(:hover) {{ background: none; }}
.gallery-sidebar row {{ border-radius: 7px; margin: 1px 8px; padding: 8px 10px; min-height: 22px; }}
)";
constexpr double ringDistance = 5;
/// A raised and a pressed tile's distance from the ground, in parts of the usual one.
constexpr double raisedHeight = 1.8;
constexpr double pressedHeight = 0.5;

std::string boxShadow(const DesktopSettings& settings, double height) {
    std::string layers;
    for (const auto& [drop, reach, color] : Palette(settings.tileStyle(1, Redaction::none).appearance).shadows()) {
        layers += fmt::format("{}0 {:.1f}px {:.1f}px rgba({:.0f}, {:.0f}, {:.0f}, {:.2f})", layers.empty() ? "" : ", ",
                              drop * height, reach * height, color.red * 255, color.green * 255, color.blue * 255,
                              color.alpha);
    }
    return layers;
}

gboolean drawSymbol(GtkWidget* widget, cairo_t* cairo, gpointer /*unused*/) {
    static SymbolSet symbols;
    GdkRGBA color{};
    GtkStyleContext* context = gtk_widget_get_style_context(widget);
    gtk_style_context_get_color(context, gtk_style_context_get_state(context), &color);
    gdk_cairo_set_source_rgba(cairo, &color);
    symbols.stroke(cairo, static_cast<const char*>(g_object_get_data(G_OBJECT(widget), symbolKey)),
                   gtk_widget_get_allocated_width(widget));
    return TRUE;
}

GtkWidget* centered(GtkWidget* label) {
    gtk_label_set_xalign(GTK_LABEL(label), 0.5);
    gtk_label_set_justify(GTK_LABEL(label), GTK_JUSTIFY_CENTER);
    return label;
}

} // namespace

void addClass(GtkWidget* widget, const char* styleClass) {
    gtk_style_context_add_class(gtk_widget_get_style_context(widget), styleClass);
}

void setAccessibleName(GtkWidget* widget, const std::string& name) {
    atk_object_set_name(gtk_widget_get_accessible(widget), name.c_str());
}

GtkWidget* makeText(const std::string& text) {
    GtkWidget* label = gtk_label_new(text.c_str());
    gtk_label_set_xalign(GTK_LABEL(label), 0);
    gtk_label_set_line_wrap(GTK_LABEL(label), TRUE);
    gtk_label_set_line_wrap_mode(GTK_LABEL(label), PANGO_WRAP_WORD_CHAR);
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
    addClass(label, GTK_STYLE_CLASS_DIM_LABEL);
    return label;
}

GtkWidget* makeSymbol(const std::string& name, int size) {
    GtkWidget* symbol = gtk_drawing_area_new();
    gtk_widget_set_size_request(symbol, size, size);
    gtk_widget_set_halign(symbol, GTK_ALIGN_CENTER);
    gtk_widget_set_valign(symbol, GTK_ALIGN_CENTER);
    g_signal_connect(symbol, "draw", G_CALLBACK(&drawSymbol), nullptr);
    setSymbol(symbol, name);
    return symbol;
}

void setSymbol(GtkWidget* symbol, const std::string& name) {
    g_object_set_data_full(G_OBJECT(symbol), symbolKey, g_strdup(name.c_str()), &g_free);
    gtk_widget_queue_draw(symbol);
}

GtkWidget* makeStatusPage(const StatusMessage& message, GtkWidget** button) {
    GtkWidget* page = gtk_box_new(GTK_ORIENTATION_VERTICAL, statusSpacing);
    g_object_set(page, "halign", GTK_ALIGN_CENTER, "valign", GTK_ALIGN_CENTER, "margin", statusMargin, nullptr);
    GtkWidget* symbol = makeSymbol(message.symbol, statusSymbolSize);
    addClass(symbol, GTK_STYLE_CLASS_DIM_LABEL);
    gtk_container_add(GTK_CONTAINER(page), symbol);
    gtk_container_add(GTK_CONTAINER(page), centered(makeTitle(message.title)));
    if (!message.note.empty()) {
        GtkWidget* note = centered(makeNote(message.note));
        gtk_label_set_selectable(GTK_LABEL(note), TRUE);
        gtk_container_add(GTK_CONTAINER(page), note);
    }
    if (!message.button.empty()) {
        *button = gtk_button_new_with_label(message.button.c_str());
        addClass(*button, GTK_STYLE_CLASS_SUGGESTED_ACTION);
        g_object_set(*button, "halign", GTK_ALIGN_CENTER, "margin-top", statusSpacing, nullptr);
        gtk_container_add(GTK_CONTAINER(page), *button);
    }
    GtkWidget* scroller = gtk_scrolled_window_new(nullptr, nullptr);
    gtk_container_add(GTK_CONTAINER(scroller), page);
    gtk_widget_show_all(scroller);
    return scroller;
}

Size availableSize() {
    GdkRectangle area{0, 0, 1280, 800};
    if (GdkMonitor* monitor = gdk_display_get_monitor(gdk_display_get_default(), 0); monitor != nullptr) {
        gdk_monitor_get_workarea(monitor, &area);
    }
    return {maxShare * area.width, maxShare * area.height};
}

void loadWindowStyle(const DesktopSettings& settings) {
    static GtkCssProvider* provider = nullptr;
    if (provider == nullptr) {
        provider = gtk_css_provider_new();
        gtk_style_context_add_provider_for_screen(gdk_screen_get_default(), GTK_STYLE_PROVIDER(provider),
                                                  GTK_STYLE_PROVIDER_PRIORITY_APPLICATION);
    }
    const double radius = cornerRadius * settings.look().textScale;
    const double noteAlpha = settings.look().contrast == Contrast::high ? 1 : 0.66;
    const std::string css = fmt::format(style, radius, radius + ringDistance, noteAlpha, boxShadow(settings, 1),
                                        boxShadow(settings, raisedHeight), boxShadow(settings, pressedHeight));
    gtk_css_provider_load_from_data(provider, css.c_str(), -1, nullptr);
}

} // namespace host
