#include "Host/Commands/ArrangementCommands.h"

#include "Host/Arrangement/ArrangementFile.h"
#include "Host/Arrangement/ArrangementJson.h"
#include "Host/Commands/HostCommands.h"
#include "Host/Connection/DeclaredChoices.h"
#include "Host/Session/AddCommand.h"
#include "Host/Session/RunningHost.h"

#include <fmt/format.h>

#include <cstdio>

namespace host {
namespace {

using platform::Unexpected;

Outcome<ArrangementFile> arrangementFile() {
    const auto folder = configurationFolder();
    if (!folder) {
        return Unexpected{folder.error()};
    }
    return ArrangementFile(platform::DiskFileSystem::shared(), *folder);
}

Outcome<Arrangement> currentArrangement() {
    const auto file = arrangementFile();
    if (!file) {
        return Unexpected{file.error()};
    }
    return file->load();
}

/// Changes the arrangement's file and returns the arrangement after the change.
Outcome<Arrangement> applyChange(const ArrangementChange& change) {
    const auto file = arrangementFile();
    if (!file) {
        return Unexpected{file.error()};
    }
    auto update = file->update(change);
    if (!update) {
        return Unexpected{update.error()};
    }
    if (update->notice) {
        fmt::print(stderr, "widgethost: {}\n", *update->notice);
    }
    notifyHost();
    return std::move(update->arrangement);
}

std::string row(std::string_view id, std::string_view kind, std::string_view family, std::string_view settings,
                std::string_view place) {
    std::string line = fmt::format("{:<4}  {:<17}  {:<10}  {:<20}  {}", id, kind, family, settings, place);
    return line.erase(line.find_last_not_of(' ') + 1) + '\n';
}

std::string settingsOf(const Instance& instance) {
    std::string text;
    for (const auto& [name, choice] : instance.configuration) {
        text += fmt::format("{}{}={}", text.empty() ? "" : " ", name, choice);
    }
    return text;
}

std::string placeOf(const Instance& instance) {
    std::string output = instance.output.value_or("");
    if (!instance.position) {
        return output;
    }
    return fmt::format("{}at {},{}", output.empty() ? "" : output + " ", instance.position->x, instance.position->y);
}

/// Returns a table of text:
///
///     ID    KIND               FAMILY      SETTINGS              PLACE
///     1     FavoritesWidget    medium      group=Work            DP-1 at 40,60
///     3     ReadingListWidget  large
std::string arrangementTable(const Arrangement& arrangement) {
    if (arrangement.instances.empty()) {
        return "No widget is placed.\n";
    }
    std::string table = row("ID", "KIND", "FAMILY", "SETTINGS", "PLACE");
    for (const Instance& instance : arrangement.instances) {
        table += row(std::to_string(instance.id), printable(instance.kind), printable(instance.family),
                     printable(settingsOf(instance)), printable(placeOf(instance)));
    }
    return table;
}

} // namespace

std::optional<Failure> addWidget(const ExtensionChoice& choice, const AddRequest& request) {
    const auto manifests = manifestsOf(choice);
    if (!manifests) {
        return manifests.error();
    }
    std::vector<std::string> extensions;
    for (const Manifest& manifest : *manifests) {
        extensions.push_back(manifest.identifier);
    }
    Instance instance{.extension = extensions.front(),
                      .kind = request.kind,
                      .family = request.family.value_or("medium"),
                      .configuration = request.settings,
                      .output = request.output,
                      .position = request.position,
                      .unknown = {}};
    if (const auto fault = validate(instance)) {
        return Failure{Failure::Kind::usage, *fault};
    }
    if (const auto code = callRunningHost(addWords(instance, request.family, extensions))) {
        return alreadyReported(*code);
    }
    const auto extension = openExtensionFor(request.kind, *manifests, choice);
    if (!extension) {
        return extension.error();
    }
    const auto widgets = PendingResponse(**extension, "describe", "{}", readDescription).wait();
    if (!widgets) {
        return widgets.error();
    }
    instance.extension = (*extension)->manifest().identifier;
    auto declared = declaredInstance(std::move(instance), request.family, *widgets);
    if (!declared) {
        return declared.error();
    }
    const auto arrangement = applyChange(Addition{*std::move(declared)});
    if (!arrangement) {
        return arrangement.error();
    }
    return writeOutput(fmt::format("{}\n", arrangement->instances.back().id), std::nullopt);
}

std::optional<Failure> editWidget(const ExtensionChoice& choice, const Edit& edit) {
    const auto arrangement = currentArrangement();
    if (!arrangement) {
        return arrangement.error();
    }
    const auto instance = instanceWith(edit.id, *arrangement);
    if (!instance) {
        return instance.error();
    }
    const auto extension = openExtensionNamed(instance->extension, choice);
    if (!extension) {
        return extension.error();
    }
    // Ids are never reused, so the instance has this kind for as long as it exists.
    const auto widgets = PendingResponse(**extension, "describe", "{}", readDescription).wait();
    if (!widgets) {
        return widgets.error();
    }
    const auto widget = declaredWidget(*widgets, instance->kind);
    if (!widget) {
        return widget.error();
    }
    if (const auto wrong = checkSettings(*widget, edit.settings)) {
        return *wrong;
    }
    return changeArrangement(edit);
}

std::optional<Failure> changeArrangement(const ArrangementChange& change) {
    const auto arrangement = applyChange(change);
    return arrangement ? std::nullopt : std::optional(arrangement.error());
}

std::optional<Failure> listArrangement(TextFormat format) {
    const auto arrangement = currentArrangement();
    if (!arrangement) {
        return arrangement.error();
    }
    const bool isText = format == TextFormat::text;
    return writeOutput(isText ? arrangementTable(*arrangement) : instancesJson(*arrangement) + '\n', std::nullopt);
}

} // namespace host
