// "add", as the running host answers it: the one process of the extension that is to show the widget also says what it
// has, and the widget's place is written together with it.
#pragma once

#include "Host/Arrangement/Arrangement.h"
#include "Host/Connection/Messages.h"

#include <gio/gio.h>

#include <optional>
#include <string>
#include <vector>

namespace host {

class HostApplication;

/// The instance in the family that was chosen, or else in the widget's own; or what the widgets do not declare of it.
platform::Outcome<Instance> declaredInstance(Instance instance, const std::optional<std::string>& family,
                                             const std::vector<WidgetInfo>& widgets);

/// What follows "add": the instance as an arrangement's file has it, its family, empty for the widget's own, and the
/// extensions that may have the widget. `instance` must have no fault.
std::vector<std::string> addWords(Instance instance, const std::optional<std::string>& family,
                                  const std::vector<std::string>& extensions);

/// Answers the command line with these words, later: with the new instance's id, or with what is wrong.
int answerAdd(HostApplication& host, GApplicationCommandLine* line, const std::vector<std::string>& words);

} // namespace host
