// The running host's command "add". It requests the description from the process that will also show the widget, and
// writes the widget with its position.
#pragma once

#include "Host/Arrangement/Arrangement.h"
#include "Host/Connection/Messages.h"

#include <gio/gio.h>

#include <optional>
#include <string>
#include <vector>

namespace host {

class HostApplication;

/// Returns the instance in the chosen family, or else in the widget's default one. Fails if the widgets do not declare
/// its kind, family or settings.
platform::Outcome<Instance> declaredInstance(Instance instance, const std::optional<std::string>& family,
                                             const std::vector<WidgetInfo>& widgets);

/// Returns the command line: "add", an arrangement with the instance alone, its family (empty for the default one), and
/// the extensions that may have the widget. Requires a valid instance.
std::vector<std::string> addWords(Instance instance, const std::optional<std::string>& family,
                                  const std::vector<std::string>& extensions);

/// Carries out the arguments after "add". Prints the new instance's id, or the error, later. Returns the exit code for
/// the case that the host ends before.
int answerAdd(HostApplication& host, GApplicationCommandLine* line, const std::vector<std::string>& words);

} // namespace host
