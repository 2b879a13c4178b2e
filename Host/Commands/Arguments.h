// Reads and checks arguments of the command line. A check returns what is wrong, or an empty text.
#pragma once

#include "Host/Arrangement/Arrangement.h"

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace CLI {
class App;
class Option;
} // namespace CLI

namespace host {

std::string checkId(const std::string& text);
/// Requires a decimal, whatever the user's language.
std::string checkCoordinate(const std::string& text);
/// "X,Y"
std::string checkPosition(const std::string& text);
std::string checkRenderingMode(const std::string& text);

/// Return nothing for invalid texts.
std::optional<Position> position(std::string_view x, std::string_view y);
std::optional<Position> position(std::string_view text);

/// Adds the repeatable option --set NAME=VALUE to `command`. Its values are appended to `settings` unchanged.
CLI::Option* addSettingsOption(CLI::App& command, std::vector<std::string>& settings);

/// Splits each into name and value, in their order.
std::vector<std::pair<std::string, std::string>> namedSettings(const std::vector<std::string>& settings);

} // namespace host
