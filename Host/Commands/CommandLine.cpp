#include "Host/Commands/CommandLine.h"

#include "Host/Commands/AppearanceOptions.h"
#include "Host/Commands/Arguments.h"
#include "Host/Commands/ArrangementCommands.h"
#include "Host/Commands/DescribeCommand.h"
#include "Host/Commands/DoctorCommand.h"
#include "Host/Commands/GalleryCommand.h"
#include "Host/Commands/HostCommands.h"
#include "Host/Commands/RenderCommand.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <cstdio>
#include <cstdlib>
#include <functional>
#include <map>
#include <unistd.h>
#include <utility>

namespace host {
namespace {

/// Enumerators by their names on the command line.
const std::map<std::string, EntryRequest::Method> methods{{"timeline", EntryRequest::Method::timeline},
                                                          {"snapshot", EntryRequest::Method::snapshot},
                                                          {"placeholder", EntryRequest::Method::placeholder}};
const std::map<std::string, std::vector<ColorScheme>> galleryAppearances{
    {"light", {ColorScheme::light}}, {"dark", {ColorScheme::dark}}, {"both", {ColorScheme::light, ColorScheme::dark}}};
const std::map<std::string, RenderFormat> formats{{"png", RenderFormat::png},
                                                  {"svg", RenderFormat::svg},
                                                  {"pdf", RenderFormat::pdf},
                                                  {"tree", RenderFormat::tree},
                                                  {"frames", RenderFormat::frames}};

bool isSet(const char* variable) {
    const char* value = std::getenv(variable); // NOLINT(concurrency-mt-unsafe): nothing here sets variables
    return value != nullptr && *value != '\0';
}

class CommandLine {
  public:
    CommandLine() {
        addGlobalOptions();
        addDescribe();
        addOptions();
        addRender();
        addGallery();
        addAdd();
        addRemove();
        addEdit();
        addMove();
        addLooks();
        addList();
        addHost();
        addDoctor();
    }

    /// Returns the process's exit code.
    int run(int argc, char** argv) {
        try {
            app_.parse(argc, argv);
            if (app_.get_subcommands().empty()) {
                runWithoutCommand();
            }
        } catch (const CLI::Success& asked) {
            return app_.exit(asked);
        } catch (const CLI::ParseError& error) {
            failure_ = Failure{Failure::Kind::usage, fmt::format("{} (see widgethost --help)", error.what())};
        }
        if (failure_ && !failure_->message.empty()) {
            fmt::print(stderr, "widgethost: {}\n", failure_->message);
        }
        return platform::exitCode(failure_);
    }

  private:
    void addGlobalOptions() {
        app_.require_subcommand(0, 1);
        app_.fallthrough();
        app_.set_version_flag("--version", "widgethost " WIDGETHOST_VERSION);
        app_.add_option("--extension", extension_,
                        "Manifest or executable of an extension to use instead of the installed ones")
            ->type_name("PATH");
        app_.add_option("--home", home_, "Folder to use as the user's home")
            ->type_name("FOLDER")
            ->check(CLI::ExistingDirectory);
        app_.add_flag("--unconfined", unconfined_,
                      "Run extensions without confinement, to find out whether it is at fault");
    }

    /// Adds a command whose `action` runs after the whole command line is parsed.
    CLI::App& addCommand(const std::string& name, const std::string& description,
                         std::function<std::optional<Failure>()> action) {
        CLI::App* command = app_.add_subcommand(name, description);
        command->callback([this, action = std::move(action)] { failure_ = action(); });
        return *command;
    }

    void runWithoutCommand() {
        if (isSet("WAYLAND_DISPLAY") || isSet("DISPLAY")) {
            failure_ = showDesktop(choice(), Presence::foreground);
        } else {
            failure_ = Failure{Failure::Kind::usage, "a command is missing (see widgethost --help)"};
        }
    }

    void addDescribe() {
        addJson(addCommand("describe", "List the widgets and their parameters",
                           [this] { return describe(choice(), textFormat()); }));
    }

    void addOptions() {
        CLI::App& command = addCommand("options", "List the choices of a widget's parameter",
                                       [this] { return listOptions(choice(), optionsRequest_, textFormat()); });
        command.add_option("KIND", optionsRequest_.kind, "Kind of the widget")->required();
        command.add_option("PARAMETER", optionsRequest_.parameter, "Name of the parameter")->required();
        command.add_option("--matching", optionsRequest_.matching, "List only choices that contain this text")
            ->type_name("TEXT");
        addJson(command);
    }

    void addRender() {
        CLI::App& command = addCommand("render", "Draw one widget", [this] { return doRender(); });
        command.add_option("KIND", renderRequest_.entry.kind, "Kind of the widget")->required();
        command.add_option("--family", renderRequest_.family, "Size of the widget")
            ->check(CLI::IsMember({"small", "medium", "large", "extraLarge"}));
        addSettingsOption(command, settings_);
        CLI::Option* request = command.add_option("--request", request_, "What to ask the extension for")
                                   ->check(CLI::IsMember(methods))
                                   ->capture_default_str();
        command.add_option("--preview", renderRequest_.preview, "Draw this design-time preview")
            ->type_name("NAME")
            ->excludes(request);
        appearance_.addTo(command);
        command.add_option("--scale", renderRequest_.scale, "Device pixels per point, for PNG")
            ->check(CLI::Range(0.25, 8.0))
            ->capture_default_str();
        command.add_option("--format", format_, "What to write: a picture, the view tree or the frames of the layout")
            ->check(CLI::IsMember(formats))
            ->capture_default_str();
        command.add_option("-o,--output", output_, "File to write instead of standard output")->type_name("FILE");
    }

    void addGallery() {
        CLI::App& command =
            addCommand("gallery", "Draw every widget in every family, with a page that shows them", [this] {
                return gallery(choice(), {.folder = galleryFolder_,
                                          .schemes = galleryAppearances.at(gallerySchemes_),
                                          .contrast = galleryContrast_});
            });
        command.add_option("-o,--output", galleryFolder_, "Folder to write to")
            ->type_name("FOLDER")
            ->capture_default_str();
        command.add_option("--appearance", gallerySchemes_, "Colour schemes to draw")
            ->check(CLI::IsMember(galleryAppearances))
            ->capture_default_str();
        addContrastOption(command, galleryContrast_);
    }

    void addAdd() {
        CLI::App& command = addCommand("add", "Place a widget on the desktop and print its id", [this] {
            return addWidget(choice(), {.kind = widgetKind_,
                                        .family = family_,
                                        .settings = placedSettings(),
                                        .output = screen_,
                                        .position = position(at_)});
        });
        command.add_option("KIND", widgetKind_, "Kind of the widget")->required();
        command.add_option("--family", family_, "Size of the widget; medium if left out");
        addSettingsOption(command, settings_);
        addScreen(command);
        command.add_option("--at", at_, "Position of the upper left corner, in points")
            ->type_name("X,Y")
            ->check(checkPosition);
    }

    void addRemove() {
        addId(addCommand("remove", "Remove a widget from the desktop",
                         [this] { return changeArrangement(Removal{.id = id_}); }));
    }

    void addEdit() {
        CLI::App& command = addCommand("edit", "Change the settings of a placed widget", [this] {
            return editWidget(choice(), Edit{.id = id_, .settings = placedSettings()});
        });
        addId(command);
        addSettingsOption(command, settings_)->required();
    }

    void addMove() {
        CLI::App& command = addCommand("move", "Move a placed widget", [this] {
            return changeArrangement(Move{.id = id_, .position = *position(x_, y_), .output = screen_});
        });
        addId(command);
        command.add_option("X", x_, "Left edge, in points")->required()->check(checkCoordinate);
        command.add_option("Y", y_, "Upper edge, in points")->required()->check(checkCoordinate);
        addScreen(command);
    }

    void addLooks() {
        addCommand("lock", "Keep placed widgets from being dragged",
                   [] { return changeArrangement(Locking{.locked = true}); });
        addCommand("unlock", "Allow placed widgets to be dragged",
                   [] { return changeArrangement(Locking{.locked = false}); });
        addCommand("mode", "Choose how placed widgets use colours",
                   [this] { return changeArrangement(SetRenderingMode{.renderingMode = mode_}); })
            .add_option("MODE", mode_, "fullColor, tinted or vibrant")
            ->required()
            ->type_name("")
            ->check(checkRenderingMode);
    }

    void addList() {
        addJson(addCommand("list", "List the placed widgets", [this] { return listArrangement(textFormat()); }),
                "Print JSON, in the form of the arrangement file");
        addId(addCommand("explain", "Show when a placed widget reloads, and what failed", [this] {
            return askHost({"explain", std::to_string(id_)});
        }));
    }

    void addId(CLI::App& command) {
        command.add_option("ID", id_, "Id of the widget, as list shows it")->required()->type_name("")->check(checkId);
    }

    void addScreen(CLI::App& command) {
        command.add_option("--output", screen_, "Name of the screen")
            ->type_name("NAME")
            ->check([](const std::string& name) { return name.empty() ? "the name is empty" : std::string(); });
    }

    /// Returns the settings; of several with one name, the last.
    Settings placedSettings() const {
        Settings settings;
        for (auto& [name, value] : namedSettings(settings_)) {
            settings.insert_or_assign(name, value);
        }
        return settings;
    }

    void addHost() {
        addCommand("desktop", "Show the placed widgets on the desktop; the default if there is a display", [this] {
            return showDesktop(choice(), background_ ? Presence::background : Presence::foreground);
        }).add_flag("--background", background_, "Never open the gallery; for the start of a session");
        addCommand("host", "Keep the placed widgets up to date without showing them",
                   [this] { return runHost(choice()); });
        addCommand("reload", "Reload the widgets of the running host", [this] {
            return kind_ ? askHost({"reload", *kind_}) : askHost({"reload"});
        }).add_option("KIND", kind_, "Reload only widgets of this kind");
    }

    void addDoctor() {
        addJson(addCommand("doctor", "Find problems on this machine; exits with 69 if there is one",
                           [this] { return doctor(choice(), textFormat()); }),
                "Print JSON: an array of objects with check, state, found and advice");
    }

    void addJson(CLI::App& command, const std::string& description = "Print JSON, as the extension answers") {
        command.add_flag("--json", json_, description);
    }

    std::optional<Failure> doRender() {
        EntryRequest& entry = renderRequest_.entry;
        entry.method = methods.at(request_);
        entry.renderingMode = appearance_.mode();
        entry.configuration = namedSettings(settings_);
        renderRequest_.output = output_;
        renderRequest_.format = formats.at(format_);
        renderRequest_.appearance = appearance_.appearance();
        if (entry.method == EntryRequest::Method::placeholder) {
            renderRequest_.appearance.redaction = Redaction::placeholder;
        }
        const bool isPicture = renderRequest_.format == RenderFormat::png || renderRequest_.format == RenderFormat::pdf;
        if (isPicture && !renderRequest_.output && isatty(STDOUT_FILENO) != 0) {
            return Failure{Failure::Kind::usage, "pictures are not written to a terminal; name a file with -o"};
        }
        return render(choice(), renderRequest_);
    }

    ExtensionChoice choice() const {
        return {.extension = extension_, .home = home_, .confined = unconfined_ ? Confined::no : Confined::yes};
    }

    TextFormat textFormat() const { return json_ ? TextFormat::json : TextFormat::text; }

    CLI::App app_{"Shows the desktop widgets of extensions", "widgethost"};
    /// Why the command failed.
    std::optional<Failure> failure_;
    std::optional<std::string> extension_;
    std::optional<std::string> home_;
    bool unconfined_ = false;
    bool json_ = false;
    bool background_ = false;
    OptionsRequest optionsRequest_;
    RenderRequest renderRequest_;
    std::vector<std::string> settings_;
    std::string request_ = "timeline";
    AppearanceOptions appearance_;
    std::string format_ = "png";
    std::optional<std::string> output_;
    std::string galleryFolder_ = "gallery";
    std::optional<std::string> kind_;
    std::string widgetKind_;
    std::optional<std::string> family_;
    InstanceId id_ = 0;
    std::string x_;
    std::string y_;
    std::string at_;
    std::optional<std::string> screen_;
    std::string mode_;
    std::string gallerySchemes_ = "both";
    Contrast galleryContrast_ = Contrast::normal;
};

} // namespace

int runCommandLine(int argc, char** argv) {
    return CommandLine().run(argc, argv);
}

} // namespace host
