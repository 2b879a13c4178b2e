#include "Host/Commands/Extensions.h"

#include "Host/Connection/DeclaredChoices.h"
#include "Host/Connection/Manifest.h"

#include <algorithm>

namespace host {
namespace {

using platform::Unexpected;

Failure unavailable(std::string message) {
    return {ExitCode::unavailable, std::move(message)};
}

Outcome<ExtensionConnection> open(const Manifest& manifest, const ExtensionChoice& choice) {
    auto connection = ExtensionConnection::open(manifest, choice.home, choice.confined);
    if (!connection) {
        return Unexpected{unavailable(connection.error().message)};
    }
    return *std::move(connection);
}

} // namespace

std::vector<platform::Expected<Manifest, std::string>> readManifests(const ExtensionChoice& choice) {
    std::vector<platform::Expected<Manifest, std::string>> manifests;
    if (choice.extension) {
        manifests.push_back(manifestFor(*choice.extension));
        return manifests;
    }
    for (const auto& file : installedManifests()) {
        manifests.push_back(readManifest(file));
    }
    return manifests;
}

Outcome<std::vector<Manifest>> manifestsOf(const ExtensionChoice& choice) {
    std::vector<Manifest> manifests;
    for (auto& manifest : readManifests(choice)) {
        if (!manifest) {
            return Unexpected{unavailable(manifest.error())};
        }
        manifests.push_back(*std::move(manifest));
    }
    if (manifests.empty()) {
        return Unexpected{unavailable("no extension is installed; name one with --extension")};
    }
    return manifests;
}

Failure failureOf(const ConnectionError& error) {
    const bool refused = error.kind == ConnectionError::Kind::refused;
    return {refused ? ExitCode::usage : ExitCode::unavailable, error.message};
}

Outcome<std::vector<ExtensionConnection>> openExtensions(const ExtensionChoice& choice) {
    const auto manifests = manifestsOf(choice);
    if (!manifests) {
        return Unexpected{manifests.error()};
    }
    std::vector<ExtensionConnection> connections;
    for (const Manifest& manifest : *manifests) {
        auto connection = open(manifest, choice);
        if (!connection) {
            return Unexpected{connection.error()};
        }
        connections.push_back(*std::move(connection));
    }
    return connections;
}

Outcome<ExtensionConnection> openExtensionFor(const std::string& kind, const ExtensionChoice& choice) {
    auto connections = openExtensions(choice);
    if (!connections) {
        return Unexpected{connections.error()};
    }
    if (connections->size() == 1) {
        return std::move(connections->front());
    }
    for (ExtensionConnection& connection : *connections) {
        const auto widgets = receive(connection, connection.send("describe", "{}"), readDescription);
        if (!widgets) {
            return Unexpected{widgets.error()};
        }
        if (std::any_of(widgets->begin(), widgets->end(), [&](const WidgetInfo& each) { return each.kind == kind; })) {
            return std::move(connection);
        }
    }
    return Unexpected{Failure{ExitCode::usage, unknownWidget(kind)}};
}

platform::Expected<Manifest, std::string> manifestNamed(const std::string& identifier, const ExtensionChoice& choice) {
    std::string reason = "the extension " + identifier + " is not installed";
    for (auto& manifest : readManifests(choice)) {
        if (!manifest) {
            // It may be the one.
            reason = manifest.error();
        } else if (manifest->identifier == identifier) {
            return *std::move(manifest);
        }
    }
    return Unexpected{reason};
}

Outcome<ExtensionConnection> openExtensionNamed(const std::string& identifier, const ExtensionChoice& choice) {
    const auto manifest = manifestNamed(identifier, choice);
    return manifest ? open(*manifest, choice) : Unexpected{unavailable(manifest.error())};
}

std::int64_t sendEntryRequest(ExtensionConnection& connection, const EntryRequest& request) {
    return connection.send(methodName(request.method), paramsOf(request));
}

} // namespace host
