#include "Host/Commands/ArrangementSubcommands.h"

#include "Host/Commands/HostCommands.h"
#include "Host/Commands/SettingsOption.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <charconv>
#include <cmath>
#include <string_view>
#include <utility>

namespace host {
namespace {

/// A coordinate in decimals, whatever the user's language; nothing where it is none or is out of bounds.
std::optional<double> coordinate(std::string_view text) {
    double value = 0;
    const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), value);
    const bool isWhole = failure == std::errc() && end == text.data() + text.size();
    return isWhole && std::fabs(value) <= Position::limit ? std::optional(value) : std::nullopt;
}

std::optional<Position> position(std::string_view x, std::string_view y) {
    const auto left = coordinate(x);
    const auto top = coordinate(y);
    return left && top ? std::optional(Position{*left, *top}) : std::nullopt;
}

/// "X,Y"
std::optional<Position> position(std::string_view text) {
    const std::size_t comma = std::min(text.find(','), text.size());
    return position(text.substr(0, comma), text.substr(std::min(comma + 1, text.size())));
}

std::string checkId(const std::string& text) {
    InstanceId id = 0;
    const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), id);
    const bool isId = failure == std::errc() && end == text.data() + text.size();
    return isId ? std::string() : fmt::format("\"{}\" is no id; widgethost list shows them", text);
}

std::string checkCoordinate(const std::string& text) {
    return coordinate(text) ? std::string() : fmt::format("\"{}\" is no number within ±{}", text, Position::limit);
}

std::string checkPosition(const std::string& text) {
    return position(text) ? std::string()
                          : fmt::format("\"{}\" is not X,Y, two numbers within ±{}", text, Position::limit);
}

} // namespace

void ArrangementSubcommands::addTo(CLI::App& app, std::function<void(Command)> choose,
                                   std::function<ExtensionChoice()> choice) {
    choose_ = std::move(choose);
    choice_ = std::move(choice);
    addAdd(app);
    addRemove(app);
    addEdit(app);
    addMove(app);
    addLooks(app);
    addList(app);
    addExplain(app);
}

void ArrangementSubcommands::addAdd(CLI::App& app) {
    CLI::App* adding = app.add_subcommand("add", "Place a widget on the desktop, and print its id");
    adding->add_option("KIND", kind_, "The widget's kind")->required();
    adding->add_option("--family", family_, "The widget's size, instead of medium");
    addSettingsOption(*adding, settings_);
    addOutput(*adding);
    adding->add_option("--at", at_, "Where its upper left corner lies, in points")
        ->type_name("X,Y")
        ->check(checkPosition);
    adding->callback([this] {
        choose_([this] {
            return addWidget(choice_(), {.kind = kind_,
                                         .family = family_.empty() ? std::nullopt : std::optional(family_),
                                         .settings = settings(),
                                         .output = output(),
                                         .position = position(at_)});
        });
    });
}

void ArrangementSubcommands::addRemove(CLI::App& app) {
    CLI::App* removing = app.add_subcommand("remove", "Take a widget off the desktop");
    addId(*removing);
    removing->callback([this] { choose_([this] { return changeArrangement(Removal{.id = id_}); }); });
}

void ArrangementSubcommands::addEdit(CLI::App& app) {
    CLI::App* editing = app.add_subcommand("edit", "Change what a placed widget is set to");
    addId(*editing);
    addSettingsOption(*editing, settings_)->required();
    editing->callback(
        [this] { choose_([this] { return editWidget(choice_(), Edit{.id = id_, .settings = settings()}); }); });
}

void ArrangementSubcommands::addMove(CLI::App& app) {
    CLI::App* moving = app.add_subcommand("move", "Put a placed widget somewhere else");
    addId(*moving);
    moving->add_option("X", x_, "The left edge, in points")->required()->check(checkCoordinate);
    moving->add_option("Y", y_, "The upper edge, in points")->required()->check(checkCoordinate);
    addOutput(*moving);
    moving->callback([this] {
        choose_(
            [this] { return changeArrangement(Move{.id = id_, .position = *position(x_, y_), .output = output()}); });
    });
}

void ArrangementSubcommands::addLooks(CLI::App& app) {
    const auto addLocking = [&](const char* name, const char* description, bool locked) {
        app.add_subcommand(name, description)->callback([this, locked] {
            choose_([locked] { return changeArrangement(Locking{.locked = locked}); });
        });
    };
    addLocking("lock", "Keep placed widgets where they are, whatever the pointer does", true);
    addLocking("unlock", "Let placed widgets be dragged", false);

    CLI::App* recoloring = app.add_subcommand("mode", "Choose how placed widgets use colours");
    recoloring->add_option("MODE", mode_, "fullColor, tinted or vibrant")
        ->required()
        ->type_name("")
        ->check([](const std::string& mode) {
            return isRenderingMode(mode) ? std::string()
                                         : fmt::format("\"{}\" is none of fullColor, tinted, vibrant", mode);
        });
    recoloring->callback([this] { choose_([this] { return changeArrangement(Recoloring{.renderingMode = mode_}); }); });
}

void ArrangementSubcommands::addList(CLI::App& app) {
    CLI::App* listing = app.add_subcommand("list", "List the placed widgets");
    listing->add_flag("--json", json_, "Print JSON, as the arrangement's file has it");
    listing->callback(
        [this] { choose_([this] { return listArrangement(json_ ? TextFormat::json : TextFormat::people); }); });
}

void ArrangementSubcommands::addExplain(CLI::App& app) {
    CLI::App* explaining = app.add_subcommand("explain", "Say how a placed widget is doing, and why");
    addId(*explaining);
    explaining->callback([this] { choose_([this] { return explainTile(id_); }); });
}

void ArrangementSubcommands::addId(CLI::App& command) {
    command.add_option("ID", id_, "The widget's id, as list shows it")->required()->type_name("")->check(checkId);
}

void ArrangementSubcommands::addOutput(CLI::App& command) {
    command.add_option("--output", output_, "The screen, by its name")
        ->type_name("NAME")
        ->check([](const std::string& name) { return name.empty() ? "the name is empty" : std::string(); });
}

Settings ArrangementSubcommands::settings() const {
    Settings settings;
    for (auto& [name, value] : namedSettings(settings_)) {
        settings.insert_or_assign(name, value);
    }
    return settings;
}

std::optional<std::string> ArrangementSubcommands::output() const {
    return output_.empty() ? std::nullopt : std::optional(output_);
}

} // namespace host
