#include "Host/Commands/ArrangementCommands.h"

#include "Host/Arrangement/ArrangementFile.h"
#include "Host/Arrangement/ArrangementJson.h"
#include "Host/Commands/ArrangementTable.h"
#include "Host/Commands/DeclaredChoices.h"
#include "Host/Commands/HostCommands.h"

#include <fmt/format.h>

#include <cstdio>

namespace host {
namespace {

using platform::Unexpected;

Failure failureOf(const ArrangementError& error) {
    switch (error.kind) {
    case ArrangementError::Kind::refused:
        return {ExitCode::usage, error.message};
    case ArrangementError::Kind::unwritable:
        return {ExitCode::cannotCreate, error.message};
    case ArrangementError::Kind::unreadable:
        break;
    }
    return {ExitCode::configuration, error.message};
}

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
    auto arrangement = file->load();
    if (!arrangement) {
        return Unexpected{failureOf(arrangement.error())};
    }
    return *std::move(arrangement);
}

/// The arrangement after the change.
Outcome<Arrangement> carryOut(const ArrangementChange& change) {
    const auto file = arrangementFile();
    if (!file) {
        return Unexpected{file.error()};
    }
    auto update = file->update(change);
    if (!update) {
        return Unexpected{failureOf(update.error())};
    }
    if (update->notice) {
        fmt::print(stderr, "widgethost: {}\n", *update->notice);
    }
    tellOfArrangement();
    return std::move(update->arrangement);
}

} // namespace

std::optional<Failure> addWidget(const ExtensionChoice& choice, const AddRequest& request) {
    auto connection = openExtensionFor(request.kind, choice);
    if (!connection) {
        return connection.error();
    }
    const auto widget = declaredWidget(*connection, request.kind);
    if (!widget) {
        return widget.error();
    }
    const auto family = declaredFamily(*widget, request.family);
    if (!family) {
        return family.error();
    }
    if (auto wrong = checkSettings(*widget, request.settings)) {
        return wrong;
    }
    const auto arrangement = carryOut(Addition{{.extension = connection->manifest().identifier,
                                                .kind = request.kind,
                                                .family = *family,
                                                .configuration = request.settings,
                                                .output = request.output,
                                                .position = request.position}});
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
        return Failure{ExitCode::usage, instance.error()};
    }
    auto connection = openExtensionNamed(instance->extension, choice);
    if (!connection) {
        return connection.error();
    }
    // An id is not given twice: whatever happens meanwhile, it is of this kind or gone.
    const auto widget = declaredWidget(*connection, instance->kind);
    if (!widget) {
        return widget.error();
    }
    if (auto wrong = checkSettings(*widget, edit.settings)) {
        return wrong;
    }
    return changeArrangement(edit);
}

std::optional<Failure> changeArrangement(const ArrangementChange& change) {
    const auto arrangement = carryOut(change);
    return arrangement ? std::nullopt : std::optional(arrangement.error());
}

std::optional<Failure> listArrangement(TextFormat format) {
    const auto arrangement = currentArrangement();
    if (!arrangement) {
        return arrangement.error();
    }
    const bool forPeople = format == TextFormat::people;
    return writeOutput(forPeople ? arrangementTable(*arrangement) : instancesJson(*arrangement) + '\n', std::nullopt);
}

} // namespace host
