#include "Host/Pictures/PictureStore.h"

#include "Host/Connection/UserFolders.h"
#include "Host/Pictures/StoredFace.h"

#include <fmt/format.h>

#include <charconv>
#include <string>
#include <string_view>
#include <vector>

namespace host {
namespace {

namespace fs = std::filesystem;
using platform::FileError;

constexpr std::string_view ending = ".tile";

std::string pathOf(const fs::path& folder, InstanceId id) {
    return (folder / fmt::format("{}{}", id, ending)).string();
}

/// Whose picture a file is by its name, be it finished ("3.tile") or not (".3.tile.new").
std::optional<InstanceId> idOf(std::string_view name) {
    constexpr std::string_view unfinished = ".new";
    if (name.starts_with('.') && name.ends_with(unfinished)) {
        name = name.substr(1, name.size() - 1 - unfinished.size());
    }
    if (!name.ends_with(ending)) {
        return std::nullopt;
    }
    InstanceId id = 0;
    const char* const end = name.data() + name.size() - ending.size();
    const auto [read, error] = std::from_chars(name.data(), end, id);
    return read == end && error == std::errc() ? std::optional(id) : std::nullopt;
}

/// Makes the folder, if need be, and keeps others out of it.
std::optional<FileError> prepare(const fs::path& folder) {
    if (!folder.is_absolute()) {
        return FileError{"there is no place for pictures: neither XDG_CACHE_HOME nor HOME is an absolute path"};
    }
    std::error_code failure;
    fs::create_directories(folder, failure);
    if (!failure) {
        fs::permissions(folder, fs::perms::owner_all, failure);
    }
    return failure ? std::optional(FileError{fmt::format("cannot make {}: {}", folder.string(), failure.message())})
                   : std::nullopt;
}

} // namespace

std::optional<Face> PictureStore::load(const Instance& instance) const {
    const auto file = folder_.is_absolute() ? files_.read(pathOf(folder_, instance.id)) : std::nullopt;
    return file ? readStoredFace(file->bytes(), instance) : std::nullopt;
}

std::optional<FileError> PictureStore::save(const Instance& instance, const Face& face) const {
    const std::string path = pathOf(folder_, instance.id);
    const std::string file = storedFace(face, instance);
    if (file.empty()) {
        return FileError{fmt::format("cannot write {}: there is no picture, or too large a one", path)};
    }
    if (auto failure = prepare(folder_)) {
        return failure;
    }
    return files_.replaceUnflushed(path, file);
}

void PictureStore::keepOnly(const std::set<InstanceId>& ids) const {
    std::error_code failure;
    std::vector<fs::path> others;
    if (!folder_.is_absolute()) {
        return;
    }
    for (fs::directory_iterator each(folder_, failure), end; !failure && each != end; each.increment(failure)) {
        const auto id = idOf(each->path().filename().native());
        if (id && !ids.contains(*id)) {
            others.push_back(each->path());
        }
    }
    for (const fs::path& path : others) {
        fs::remove(path, failure);
    }
}

fs::path tilePictureFolder() {
    return userCacheFolder() / "widgethost" / "tiles";
}

} // namespace host
