#include "Host/Connection/Manifest.h"

#include "Host/Connection/UserFolders.h"

#include <fmt/format.h>
#include <simdjson.h>

#include <algorithm>
#include <set>

namespace host {
namespace {

namespace fs = std::filesystem;

constexpr std::uintmax_t maxManifestSize = std::uintmax_t{1} << 20U;

/// Whether the path stays below its base, and is not the base itself.
bool staysBelow(const fs::path& relative) {
    return relative.is_relative() && relative.lexically_normal() != "." &&
           std::find(relative.begin(), relative.end(), "..") == relative.end();
}

} // namespace

platform::Outcome<Manifest> readManifest(const fs::path& file) {
    std::error_code failure;
    if (!fs::is_regular_file(file, failure)) {
        return platform::unavailable(fmt::format("there is no manifest at {}", file.string()));
    }
    if (fs::file_size(file, failure) > maxManifestSize || failure) {
        return platform::unavailable(fmt::format("{} is not a manifest", file.string()));
    }
    simdjson::dom::parser parser;
    simdjson::dom::object json;
    if (parser.load(file.string()).get(json) != simdjson::SUCCESS) {
        return platform::unavailable(fmt::format("{} is not a JSON object", file.string()));
    }
    std::string_view identifier;
    if (json["identifier"].get(identifier) != simdjson::SUCCESS || identifier.empty() || identifier.front() == '.' ||
        identifier.find('/') != std::string_view::npos) {
        return platform::unavailable(
            fmt::format("{}: \"identifier\" is missing or cannot name a folder", file.string()));
    }
    std::string_view executable;
    if (json["executable"].get(executable) != simdjson::SUCCESS || executable.empty()) {
        return platform::unavailable(fmt::format("{}: \"executable\" is missing", file.string()));
    }
    std::string_view name;
    if (json["name"].get(name) != simdjson::SUCCESS || name.empty()) {
        name = identifier;
    }
    const fs::path folder = fs::absolute(file, failure).parent_path();
    Manifest manifest{.identifier = std::string(identifier),
                      .name = std::string(name),
                      .executable = (folder / fs::path(executable)).lexically_normal(),
                      .reads = {},
                      .network = false};
    simdjson::dom::array reads;
    if (json["reads"].get(reads) == simdjson::SUCCESS) {
        for (const simdjson::dom::element read : reads) {
            std::string_view path;
            if (read.get(path) != simdjson::SUCCESS || path.empty() || !staysBelow(path)) {
                return platform::unavailable(
                    fmt::format("{}: \"reads\" must list folders below the home only", file.string()));
            }
            manifest.reads.emplace_back(path);
        }
    }
    if (json["network"].get(manifest.network) != simdjson::SUCCESS) {
        manifest.network = false;
    }
    return manifest;
}

bool mayRead(const Manifest& manifest, const fs::path& path) {
    if (!staysBelow(path) || path.native().find('\0') != std::string::npos) {
        return false;
    }
    const fs::path normal = path.lexically_normal();
    return std::any_of(manifest.reads.begin(), manifest.reads.end(), [&](const std::string& read) {
        const fs::path folder = fs::path(read + "/").lexically_normal().parent_path();
        return std::mismatch(folder.begin(), folder.end(), normal.begin(), normal.end()).first == folder.end();
    });
}

platform::Outcome<Manifest> manifestFor(const fs::path& path) {
    std::error_code failure;
    if (path.extension() == ".json") {
        return readManifest(path);
    }
    fs::path beside = path;
    beside += ".json";
    const fs::path executable = fs::absolute(path, failure).lexically_normal();
    if (!fs::is_regular_file(beside, failure)) {
        return Manifest{.identifier = executable.filename().string(),
                        .name = executable.filename().string(),
                        .executable = executable,
                        .reads = {}};
    }
    auto manifest = readManifest(beside);
    if (manifest) {
        manifest->executable = executable;
    }
    return manifest;
}

std::vector<fs::path> installedManifests() {
    std::vector<fs::path> manifests;
    std::set<std::string> names;
    for (const fs::path& folder : dataFolders()) {
        std::vector<fs::path> here;
        std::error_code failure;
        for (const auto& entry : fs::directory_iterator(folder / "widgethost" / "extensions", failure)) {
            if (entry.path().extension() == ".json") {
                here.push_back(entry.path());
            }
        }
        std::sort(here.begin(), here.end());
        for (fs::path& manifest : here) {
            if (names.insert(manifest.filename().string()).second) {
                manifests.push_back(std::move(manifest));
            }
        }
    }
    return manifests;
}

} // namespace host
