#include "Host/Commands/Extensions.h"

#include "Host/Connection/DeclaredChoices.h"
#include "Host/Connection/Manifest.h"

#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <utility>

namespace host {
namespace {

using platform::Unexpected;

/// Where there are other extensions, nobody waits longer for one to describe itself.
constexpr std::chrono::milliseconds timeoutAmongSeveral{10'000};

Failure unavailable(std::string message) {
    return {Failure::Kind::unavailable, std::move(message)};
}

/// Names failures of single extensions on standard error; but the last is the command's, if nothing `works`.
std::optional<Failure> failureOf(std::vector<Failure> failures, bool works) {
    std::optional<Failure> last;
    if (!works && !failures.empty()) {
        last = std::move(failures.back());
        failures.pop_back();
    }
    for (const Failure& failure : failures) {
        fmt::print(stderr, "widgethost: {}\n", failure.message);
    }
    return last;
}

Outcome<ExtensionConnection> open(const Manifest& manifest, const ExtensionChoice& choice) {
    auto connection = ExtensionConnection::open(manifest, choice.home, choice.confined);
    if (!connection) {
        return Unexpected{unavailable(connection.error().message)};
    }
    return *std::move(connection);
}

std::optional<Failure> useExtensions(const std::vector<Manifest>& manifests, const ExtensionChoice& choice,
                                     const UseExtension& use) {
    // All start at once.
    std::vector<std::pair<Outcome<ExtensionConnection>, std::int64_t>> opened;
    for (const Manifest& manifest : manifests) {
        auto connection = open(manifest, choice);
        const std::int64_t id = connection ? connection->send("describe", "{}") : 0;
        opened.emplace_back(std::move(connection), id);
    }
    const auto timeout = manifests.size() > 1 ? timeoutAmongSeveral : Timeouts{}.response;
    const auto describeAndUse = [&](Outcome<ExtensionConnection>& connection, std::int64_t id) -> Outcome<bool> {
        if (!connection) {
            return Unexpected{connection.error()};
        }
        auto answer = connection->answer(id, timeout);
        if (!answer) {
            return Unexpected{failureOf(answer.error())};
        }
        auto widgets = readDescription(*answer);
        if (!widgets) {
            return Unexpected{unavailable(widgets.error())};
        }
        DescribedExtension described{*std::move(connection), *std::move(answer), *std::move(widgets)};
        return use(described);
    };
    std::vector<Failure> failures;
    bool works = false;
    for (std::size_t i = 0; i < manifests.size(); ++i) {
        const auto isLast = describeAndUse(opened[i].first, opened[i].second);
        if (!isLast) {
            if (isLast.error().kind == Failure::Kind::unwritable) {
                return isLast.error();
            }
            const std::string name = manifests.size() > 1 ? manifests[i].identifier + ": " : "";
            failures.push_back({isLast.error().kind, name + isLast.error().message});
            continue;
        }
        works = true;
        if (*isLast) {
            break;
        }
    }
    return failureOf(std::move(failures), works);
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
    std::vector<Failure> failures;
    for (auto& manifest : readManifests(choice)) {
        if (manifest) {
            manifests.push_back(*std::move(manifest));
        } else {
            failures.push_back(unavailable(manifest.error()));
        }
    }
    if (auto failure = failureOf(std::move(failures), !manifests.empty())) {
        return Unexpected{*std::move(failure)};
    }
    if (manifests.empty()) {
        return Unexpected{unavailable("no extension is installed; name one with --extension")};
    }
    return manifests;
}

Failure failureOf(const ConnectionError& error) {
    const bool refused = error.kind == ConnectionError::Kind::refused;
    return {refused ? Failure::Kind::usage : Failure::Kind::unavailable, error.message};
}

std::optional<Failure> useExtensions(const ExtensionChoice& choice, const UseExtension& use) {
    const auto manifests = manifestsOf(choice);
    return manifests ? useExtensions(*manifests, choice, use) : std::optional(manifests.error());
}

Outcome<ExtensionConnection> openExtensionFor(const std::string& kind, const ExtensionChoice& choice) {
    const auto manifests = manifestsOf(choice);
    return manifests ? openExtensionFor(kind, *manifests, choice) : Unexpected{manifests.error()};
}

Outcome<ExtensionConnection> openExtensionFor(const std::string& kind, const std::vector<Manifest>& manifests,
                                              const ExtensionChoice& choice) {
    if (manifests.size() == 1) {
        return open(manifests.front(), choice);
    }
    std::optional<ExtensionConnection> found;
    auto failure = useExtensions(manifests, choice, [&](DescribedExtension& each) -> Outcome<bool> {
        if (std::any_of(each.widgets.begin(), each.widgets.end(),
                        [&](const WidgetInfo& widget) { return widget.kind == kind; })) {
            found.emplace(std::move(each.connection));
        }
        return found.has_value();
    });
    if (failure) {
        return Unexpected{*std::move(failure)};
    }
    if (!found) {
        return Unexpected{Failure{Failure::Kind::usage, unknownWidget(kind)}};
    }
    return *std::move(found);
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
