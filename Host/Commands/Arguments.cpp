#include "Host/Commands/Arguments.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <cmath>

namespace host {
namespace {

/// Returns the coordinate, or nothing if the text is not a decimal within the limit.
std::optional<double> coordinate(std::string_view text) {
    double value = 0;
    const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), value);
    const bool isWhole = failure == std::errc() && end == text.data() + text.size();
    return isWhole && std::fabs(value) <= Position::limit ? std::optional(value) : std::nullopt;
}

} // namespace

std::optional<Position> position(std::string_view x, std::string_view y) {
    const auto left = coordinate(x);
    const auto top = coordinate(y);
    return left && top ? std::optional(Position{*left, *top}) : std::nullopt;
}

std::optional<Position> position(std::string_view text) {
    const std::size_t comma = std::min(text.find(','), text.size());
    return position(text.substr(0, comma), text.substr(std::min(comma + 1, text.size())));
}

std::string checkId(const std::string& text) {
    InstanceId id = 0;
    const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), id);
    const bool isId = failure == std::errc() && end == text.data() + text.size();
    return isId ? std::string() : fmt::format("\"{}\" is not an id; see widgethost list", text);
}

std::string checkCoordinate(const std::string& text) {
    return coordinate(text) ? std::string() : fmt::format("\"{}\" is not a number within ±{}", text, Position::limit);
}

std::string checkPosition(const std::string& text) {
    return position(text) ? std::string()
                          : fmt::format("\"{}\" is not X,Y, two numbers within ±{}", text, Position::limit);
}

std::string checkRenderingMode(const std::string& text) {
    return isRenderingMode(text) ? std::string() : fmt::format("\"{}\" is not fullColor, tinted or vibrant", text);
}

CLI::Option* addSettingsOption(CLI::App& command, std::vector<std::string>& settings) {
    return command.add_option("--set", settings, "Setting of the widget; can be repeated")
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
