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

std::vector<std::string> Catalog::extensions() const {
    std::vector<std::string> identifiers;
    for (const auto& manifest : readManifests_()) {
        if (manifest) {
            identifiers.push_back(manifest->identifier);
        }
    }
    return identifiers;
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
