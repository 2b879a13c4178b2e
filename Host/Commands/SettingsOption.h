// The option --set NAME=VALUE, as often as needed.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace CLI {
class App;
class Option;
} // namespace CLI

namespace host {

/// Adds the option to `command`; what is given goes to `settings`, as it is.
CLI::Option* addSettingsOption(CLI::App& command, std::vector<std::string>& settings);

/// Name and value of each, in their order.
std::vector<std::pair<std::string, std::string>> namedSettings(const std::vector<std::string>& settings);

} // namespace host
