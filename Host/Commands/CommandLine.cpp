#include "Host/Commands/CommandLine.h"

#include "Host/Commands/AppearanceOptions.h"
#include "Host/Commands/ArrangementSubcommands.h"
#include "Host/Commands/DescribeCommand.h"
#include "Host/Commands/DoctorCommand.h"
#include "Host/Commands/GalleryCommand.h"
#include "Host/Commands/GlobalOptions.h"
#include "Host/Commands/HostCommands.h"
#include "Host/Commands/RenderCommand.h"
#include "Host/Commands/SettingsOption.h"

#include <CLI/CLI.hpp>

#include <functional>
#include <map>
#include <unistd.h>
#include <utility>

namespace host {
namespace {

using Command = std::function<std::optional<Failure>()>;

/// The enumerations of the command line, by the names they have there.
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

template <class Value>
std::vector<std::string> names(const std::map<std::string, Value>& values) {
    std::vector<std::string> all;
    for (const auto& [name, value] : values) {
        all.push_back(name);
    }
    return all;
}

class CommandLine {
  public:
    CommandLine() {
        global_.addTo(app_);
        addDescribe();
        addOptions();
        addRender();
        addGallery();
        arrangement_.addTo(
            app_, [this](Command command) { command_ = std::move(command); }, [this] { return choice(); });
        addHost();
        addDoctor();
    }

    int run(int argc, char** argv) {
        if (const auto code = parseArguments(app_, argc, argv)) {
            return *code;
        }
        if (!command_) {
            return finish(Failure{Failure::Kind::usage, "a command is missing (see widgethost --help)"});
        }
        return finish(command_());
    }

  private:
    void addDescribe() {
        CLI::App* describing = app_.add_subcommand("describe", "Say what widgets there are and what they offer");
        addJson(describing);
        describing->callback([this] { command_ = [this] { return describe(choice(), textFormat()); }; });
    }

    void addOptions() {
        CLI::App* listing = app_.add_subcommand("options", "List the choices of a widget's parameter");
        listing->add_option("KIND", optionsRequest_.kind, "The widget's kind")->required();
        listing->add_option("PARAMETER", optionsRequest_.parameter, "The parameter's name")->required();
        listing->add_option("--matching", matching_, "Only choices that contain this text")->type_name("TEXT");
        addJson(listing);
        listing->callback([this, listing] {
            command_ = [this, listing] {
                if (listing->count("--matching") > 0) {
                    optionsRequest_.matching = matching_;
                }
                return listOptions(choice(), optionsRequest_, textFormat());
            };
        });
    }

    void addRender() {
        CLI::App* rendering = app_.add_subcommand("render", "Draw one widget");
        rendering->add_option("KIND", renderRequest_.entry.kind, "The widget's kind")->required();
        rendering->add_option("--family", family_, "The widget's size")
            ->check(CLI::IsMember({"small", "medium", "large", "extraLarge"}));
        addSettingsOption(*rendering, settings_);
        CLI::Option* request = rendering->add_option("--request", request_, "What the extension is asked for")
                                   ->check(CLI::IsMember(names(methods)))
                                   ->capture_default_str();
        rendering->add_option("--preview", preview_, "A design-time preview of the widget")
            ->type_name("NAME")
            ->excludes(request);
        appearance_.addTo(*rendering);
        rendering->add_option("--scale", renderRequest_.scale, "Device pixels a point, for PNG")
            ->check(CLI::Range(0.25, 8.0))
            ->capture_default_str();
        rendering->add_option("--format", format_, "What is written: a picture, the view tree or the frames laid out")
            ->check(CLI::IsMember(names(formats)))
            ->capture_default_str();
        rendering->add_option("-o,--output", output_, "The file to write, instead of standard output")
            ->type_name("FILE");
        rendering->callback([this, rendering] { command_ = [this, rendering] { return doRender(*rendering); }; });
    }

    void addGallery() {
        CLI::App* drawing =
            app_.add_subcommand("gallery", "Draw every widget in every family, and a page that shows them");
        drawing->add_option("-o,--output", galleryFolder_, "The folder to write")
            ->type_name("FOLDER")
            ->capture_default_str();
        drawing->add_option("--appearance", gallerySchemes_, "The colour schemes that are drawn")
            ->check(CLI::IsMember(names(galleryAppearances)))
            ->capture_default_str();
        addContrastOption(*drawing, galleryContrast_);
        drawing->callback([this] {
            command_ = [this] {
                return gallery(choice(), {.folder = galleryFolder_,
                                          .schemes = galleryAppearances.at(gallerySchemes_),
                                          .contrast = galleryContrast_});
            };
        });
    }

    void addHost() {
        // For the help alone: this program is not started for it.
        addDesktopCommand(app_, background_);

        CLI::App* running =
            app_.add_subcommand("host", "Keep the placed widgets up to date without showing them, until told to end");
        running->callback([this] { command_ = [this] { return runHost(choice()); }; });

        CLI::App* reloading = app_.add_subcommand("reload", "Have the running host ask for its widgets at once");
        reloading->add_option("KIND", kind_, "Only widgets of this kind");
        reloading->callback(
            [this] { command_ = [this] { return reloadTiles(kind_.empty() ? std::nullopt : std::optional(kind_)); }; });
    }

    void addDoctor() {
        CLI::App* examining = app_.add_subcommand(
            "doctor", "Say what stands in the way of widgets on this machine; ends with 69 where there is a problem");
        addJson(examining, "Print JSON: an array of objects with check, state, found and advice");
        examining->callback([this] { command_ = [this] { return doctor(choice(), textFormat()); }; });
    }

    void addJson(CLI::App* command, const std::string& description = "Print JSON, as the extension answers") {
        command->add_flag("--json", json_, description);
    }

    std::optional<Failure> doRender(const CLI::App& given) {
        EntryRequest& entry = renderRequest_.entry;
        entry.method = methods.at(request_);
        entry.renderingMode = appearance_.mode();
        entry.configuration = namedSettings(settings_);
        if (given.count("--family") > 0) {
            renderRequest_.family = family_;
        }
        if (given.count("--preview") > 0) {
            renderRequest_.preview = preview_;
        }
        if (given.count("--output") > 0) {
            renderRequest_.output = output_;
        }
        renderRequest_.format = formats.at(format_);
        renderRequest_.appearance = appearance_.appearance();
        if (entry.method == EntryRequest::Method::placeholder) {
            renderRequest_.appearance.redaction = Redaction::placeholder;
        }
        const bool isPicture = renderRequest_.format == RenderFormat::png || renderRequest_.format == RenderFormat::pdf;
        if (isPicture && !renderRequest_.output && isatty(STDOUT_FILENO) != 0) {
            return Failure{Failure::Kind::usage, "a picture is nothing for a terminal; name a file with -o"};
        }
        return render(choice(), renderRequest_);
    }

    ExtensionChoice choice() const { return global_.choice(); }

    TextFormat textFormat() const { return json_ ? TextFormat::json : TextFormat::people; }

    CLI::App app_{"Shows the desktop widgets of extensions", "widgethost"};
    Command command_;
    GlobalOptions global_;
    bool json_ = false;
    bool background_ = false;
    OptionsRequest optionsRequest_;
    std::string matching_;
    RenderRequest renderRequest_;
    std::string family_;
    std::vector<std::string> settings_;
    std::string request_ = "timeline";
    std::string preview_;
    AppearanceOptions appearance_;
    std::string format_ = "png";
    std::string output_;
    std::string galleryFolder_ = "gallery";
    std::string kind_;
    ArrangementSubcommands arrangement_;
    std::string gallerySchemes_ = "both";
    Contrast galleryContrast_ = Contrast::normal;
};

} // namespace

int runCommandLine(int argc, char** argv) {
    return CommandLine().run(argc, argv);
}

} // namespace host
