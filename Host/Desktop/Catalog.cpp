#include "Host/Desktop/Catalog.h"

#include <algorithm>

namespace host {

void Catalog::describe(HostApplication& host, const std::string& extension, Described done) {
    host.request(extension, "describe", "{}",
                 [this, extension, done = std::move(done)](const ExtensionClient::Result& result) {
                     const auto widgets = result ? readDescription(*result) : platform::Unexpected{result.error()};
                     if (widgets) {
                         widgets_.insert_or_assign(extension, *widgets);
                     }
                     done(widgets);
                 });
}

const WidgetInfo* Catalog::widget(const std::string& extension, const std::string& kind) const {
    const auto known = widgets_.find(extension);
    if (known == widgets_.end()) {
        return nullptr;
    }
    const auto found = std::find_if(known->second.begin(), known->second.end(),
                                    [&](const WidgetInfo& each) { return each.kind == kind; });
    return found == known->second.end() ? nullptr : &*found;
}

std::vector<ExtensionInfo> Catalog::extensions() const {
    std::vector<ExtensionInfo> extensions;
    for (const auto& manifest : readManifests_()) {
        // The first of two with the same identifier counts.
        const auto isKnown = [&](const ExtensionInfo& each) { return each.identifier == manifest->identifier; };
        if (manifest && std::none_of(extensions.begin(), extensions.end(), isKnown)) {
            extensions.push_back({manifest->identifier, manifest->name});
        }
    }
    return extensions;
}

std::vector<std::filesystem::path> Catalog::missingFolders(const std::filesystem::path& home) const {
    std::vector<std::filesystem::path> missing;
    for (const auto& manifest : readManifests_()) {
        for (const std::string& folder : manifest ? manifest->reads : std::vector<std::string>()) {
            std::error_code failure;
            if (!std::filesystem::exists(home / folder, failure)) {
                missing.push_back(home / folder);
            }
        }
    }
    return missing;
}

} // namespace host
