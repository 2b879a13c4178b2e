// What the toolkit's windows of the host are composed of: texts, symbols, pages that say something, tiles' frames.
// On the main thread.
#pragma once

#include "Host/Desktop/DesktopSettings.h"

#include <gtk/gtk.h>

#include <string>

namespace host {

void addClass(GtkWidget* widget, const char* styleClass);
/// What a screen reader calls it.
void setAccessibleName(GtkWidget* widget, const std::string& name);

/// A heading at the start of its line. It wraps, as the others do.
GtkWidget* makeTitle(const std::string& text);
GtkWidget* makeText(const std::string& text);
/// A fainter text.
GtkWidget* makeNote(const std::string& text);

/// One of the host's symbols in the text's colour, `size` units square.
GtkWidget* makeSymbol(const std::string& name, int size);
void setSymbol(GtkWidget* symbol, const std::string& name);

struct StatusMessage {
    std::string symbol;
    std::string title;
    /// Left empty, the page has none; as the button's label.
    std::string note;
    std::string button;
};
/// A page with nothing but the message in its middle. `button` gets the button if there is one.
GtkWidget* makeStatusPage(const StatusMessage& message, GtkWidget** button = nullptr);

/// What windows may take of the first screen; a usual screen's where there is none.
Size availableSize();

/// The class of what contains a tile's picture alone: it gets the tile's corners and shadow. A button is raised under
/// the pointer.
inline constexpr const char* tileClass = "tile";
/// Reads the windows' own style, for the text's size of now, on top of the theme.
void loadWindowStyle(const DesktopSettings& settings);

} // namespace host
