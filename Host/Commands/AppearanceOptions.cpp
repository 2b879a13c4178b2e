#include "Host/Commands/AppearanceOptions.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <vector>

namespace host {
namespace {

template <std::size_t Count>
CLI::IsMember oneOf(const std::array<std::string_view, Count>& names) {
    return CLI::IsMember(std::vector<std::string>(names.begin(), names.end()));
}

} // namespace

void AppearanceOptions::addTo(CLI::App& command) {
    command.add_option("--mode", mode_, "How to use colours")->check(oneOf(drawingModeNames))->capture_default_str();
    command.add_option("--appearance", scheme_, "Colour scheme")->check(oneOf(colorSchemeNames))->capture_default_str();
    addContrastOption(command, contrast_);
    command
        .add_option_function<std::string>(
            "--accent", [this](const std::string& text) { accent_ = colorFromHex(text); }, "Colour of the tinted mode")
        ->type_name("RRGGBB")
        ->check([](const std::string& text) {
            return colorFromHex(text) ? std::string() : "\"" + text + "\" is not a colour such as AF52DE";
        });
}

Appearance AppearanceOptions::appearance() const {
    return {.scheme = *valueNamed<ColorScheme>(scheme_, colorSchemeNames),
            .mode = *valueNamed<DrawingMode>(mode_, drawingModeNames),
            .contrast = contrast_,
            .accent = accent_};
}

void addContrastOption(CLI::App& command, Contrast& contrast) {
    command
        .add_option_function<std::string>(
            "--contrast",
            [&contrast](const std::string& name) { contrast = *valueNamed<Contrast>(name, contrastNames); },
            "Contrast of the content with the tile")
        ->check(oneOf(contrastNames))
        ->default_str("normal");
}

std::optional<Rgba> colorFromHex(std::string_view text) {
    if (text.starts_with('#')) {
        text.remove_prefix(1);
    }
    constexpr std::size_t digits = 6;
    if (text.size() != digits ||
        !std::all_of(text.begin(), text.end(), [](unsigned char c) { return std::isxdigit(c); })) {
        return std::nullopt;
    }
    const unsigned long rgb = std::stoul(std::string(text), nullptr, 16);
    const auto component = [&](unsigned shift) { return static_cast<double>(rgb >> shift & 0xFFU) / 255; };
    return Rgba{component(16), component(8), component(0)};
}

} // namespace host
