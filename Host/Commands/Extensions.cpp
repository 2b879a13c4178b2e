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

/// The longest time to wait for a description if there are other extensions.
constexpr std::chrono::milliseconds timeoutAmongSeveral{10'000};

/// Names failures of single extensions on standard error. Returns the last one instead if nothing `works`.
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

Outcome<ExtensionHandle> start(const Manifest& manifest, const ExtensionChoice& choice,
                               std::chrono::milliseconds responseTimeout = Timeouts{}.response) {
    return ExtensionClient::start(manifest, choice.home, choice.confined,
                                  {.response = responseTimeout, .idle = std::nullopt});
}

Outcome<Description> readDescriptionAndText(Json result) {
    auto widgets = readDescription(result);
    auto text = readText(result);
    return widgets ? Outcome<Description>({*std::move(widgets), *std::move(text)}) : Unexpected{widgets.error()};
}

std::optional<Failure> useExtensions(const std::vector<Manifest>& manifests, const ExtensionChoice& choice,
                                     const UseExtension& use) {
    struct Started {
        Outcome<ExtensionHandle> client;
        std::optional<PendingResponse<Description>> description;
    };
    // All start at once.
    std::vector<Started> all;
    for (const Manifest& manifest : manifests) {
        Started& each = all.emplace_back(Started{
            .client = start(manifest, choice, manifests.size() > 1 ? timeoutAmongSeveral : Timeouts{}.response)});
        if (each.client) {
            each.description.emplace(**each.client, "describe", "{}", readDescriptionAndText);
        }
    }
    const auto describeAndUse = [&](Started& each) -> Outcome<bool> {
        if (!each.client) {
            return Unexpected{each.client.error()};
        }
        const auto& description = each.description->wait();
        if (!description) {
            return Unexpected{description.error()};
        }
        (*each.client)->setResponseTimeout(Timeouts{}.response);
        DescribedExtension described{*std::move(each.client), *description};
        return use(described);
    };
    std::vector<Failure> failures;
    bool works = false;
    for (std::size_t i = 0; i < manifests.size(); ++i) {
        const auto isLast = describeAndUse(all[i]);
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

std::vector<Outcome<Manifest>> readManifests(const ExtensionChoice& choice) {
    std::vector<Outcome<Manifest>> manifests;
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
            failures.push_back(manifest.error());
        }
    }
    if (auto failure = failureOf(std::move(failures), !manifests.empty())) {
        return Unexpected{*std::move(failure)};
    }
    if (manifests.empty()) {
        return platform::unavailable("no extension is installed; name one with --extension");
    }
    return manifests;
}

std::optional<Failure> useExtensions(const ExtensionChoice& choice, const UseExtension& use) {
    const auto manifests = manifestsOf(choice);
    return manifests ? useExtensions(*manifests, choice, use) : std::optional(manifests.error());
}

Outcome<ExtensionHandle> openExtensionFor(const std::string& kind, const ExtensionChoice& choice) {
    const auto manifests = manifestsOf(choice);
    return manifests ? openExtensionFor(kind, *manifests, choice) : Unexpected{manifests.error()};
}

Outcome<ExtensionHandle> openExtensionFor(const std::string& kind, const std::vector<Manifest>& manifests,
                                          const ExtensionChoice& choice) {
    if (manifests.size() == 1) {
        return start(manifests.front(), choice);
    }
    ExtensionHandle found;
    auto failure = useExtensions(manifests, choice, [&](DescribedExtension& each) -> Outcome<bool> {
        if (std::any_of(each.description.widgets.begin(), each.description.widgets.end(),
                        [&](const WidgetInfo& widget) { return widget.kind == kind; })) {
            found = std::move(each.client);
        }
        return found != nullptr;
    });
    if (failure) {
        return Unexpected{*std::move(failure)};
    }
    if (!found) {
        return Unexpected{unknownWidget(kind)};
    }
    return found;
}

Outcome<Manifest> manifestNamed(const std::string& identifier, const ExtensionChoice& choice) {
    Failure reason{Failure::Kind::unavailable, "the extension " + identifier + " is not installed"};
    for (auto& manifest : readManifests(choice)) {
        if (!manifest) {
            // It may be the one with that identifier.
            reason = manifest.error();
        } else if (manifest->identifier == identifier) {
            return *std::move(manifest);
        }
    }
    return Unexpected{reason};
}

Outcome<ExtensionHandle> openExtensionNamed(const std::string& identifier, const ExtensionChoice& choice) {
    const auto manifest = manifestNamed(identifier, choice);
    return manifest ? start(*manifest, choice) : Unexpected{manifest.error()};
}

} // namespace host
