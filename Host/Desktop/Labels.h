// Parts of the gallery and the editor: texts, symbols, status pages, frames of tiles. Called on the main thread.
#pragma once

#include "Host/Desktop/DesktopSettings.h"

#include <gtk/gtk.h>

#include <string>

namespace host {

void addClass(GtkWidget* widget, const char* styleClass);
/// Sets the name that screen readers read.
void setAccessibleName(GtkWidget* widget, const std::string& name);

/// Makes a heading at the start of its line. Wraps, as the others do.
GtkWidget* makeTitle(const std::string& text);
GtkWidget* makeText(const std::string& text);
/// Makes a fainter text.
GtkWidget* makeNote(const std::string& text);

/// Makes a symbol in the text's colour, `size` units square.
GtkWidget* makeSymbol(const std::string& name, int size);
void setSymbol(GtkWidget* symbol, const std::string& name);

struct StatusMessage {
    std::string symbol;
    std::string title;
    /// May be empty.
    std::string note;
    /// The button's label; no button if empty.
    std::string button;
};
/// Makes a page with the message in its middle. Sets `button` to the button if the message has one.
GtkWidget* makeStatusPage(const StatusMessage& message, GtkWidget** button = nullptr);

/// Returns the maximum size of a window on the first screen; without a screen, that of a usual one.
Size availableSize();

/// The style class of a container of one tile's picture: it has the tile's corners and shadow. A button is raised under
/// the pointer.
inline constexpr const char* tileClass = "tile";
/// Loads the windows' style, on top of the theme, for the current size of text, scheme and contrast.
void loadWindowStyle(const DesktopSettings& settings);

} // namespace host
