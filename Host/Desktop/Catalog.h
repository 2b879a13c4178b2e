// The widgets of the installed extensions, as the extensions describe them.
#pragma once

#include "Host/Connection/Manifest.h"
#include "Host/Connection/Messages.h"
#include "Host/Session/HostApplication.h"

#include <filesystem>
#include <functional>
#include <map>
#include <string>
#include <vector>

namespace host {

struct ExtensionInfo {
    std::string identifier;
    std::string name;
};

class Catalog {
  public:
    using ReadManifests = std::function<std::vector<platform::Outcome<Manifest>>()>;

    explicit Catalog(ReadManifests readManifests) : readManifests_(std::move(readManifests)) {}

    /// Requests the extension's widgets. Calls `done` from the main loop with them, or with the reason for a failure.
    using Described = std::function<void(const platform::Outcome<std::vector<WidgetInfo>>& widgets)>;
    void describe(HostApplication& host, const std::string& extension, Described done);

    /// Returns the widget as last described; null before that.
    const WidgetInfo* widget(const std::string& extension, const std::string& kind) const;

    /// Returns the installed extensions, in the order of their manifests, without those of broken manifests.
    std::vector<ExtensionInfo> extensions() const;

    /// Returns the folders below `home` that installed extensions read and that do not exist.
    std::vector<std::filesystem::path> missingFolders(const std::filesystem::path& home) const;

  private:
    ReadManifests readManifests_;
    std::map<std::string, std::vector<WidgetInfo>> widgets_;
};

} // namespace host
