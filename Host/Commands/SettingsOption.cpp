#include "Host/Commands/SettingsOption.h"

#include <CLI/CLI.hpp>

namespace host {

CLI::Option* addSettingsOption(CLI::App& command, std::vector<std::string>& settings) {
    return command.add_option("--set", settings, "A choice of the widget's configuration, as often as needed")
        ->type_name("NAME=VALUE")
        ->expected(1)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll)
        ->check([](const std::string& setting) {
            const std::size_t equals = setting.find('=');
            return equals == 0 || equals == std::string::npos ? "\"" + setting + "\" is not NAME=VALUE" : std::string();
        });
}

std::vector<std::pair<std::string, std::string>> namedSettings(const std::vector<std::string>& settings) {
    std::vector<std::pair<std::string, std::string>> named;
    for (const std::string& setting : settings) {
        const std::size_t equals = setting.find('=');
        named.emplace_back(setting.substr(0, equals), setting.substr(equals + 1));
    }
    return named;
}

} // namespace host
