// The texts of the toolkit's windows.
#pragma once

#include <gtk/gtk.h>

#include <string>

namespace host {

/// A large one, at the start of its line.
GtkWidget* makeTitle(const std::string& text);
/// A plain one, which wraps, as the others do.
GtkWidget* makeText(const std::string& text);
/// A fainter one.
GtkWidget* makeNote(const std::string& text);

} // namespace host
