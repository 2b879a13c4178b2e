#include "Host/Session/EntryStore.h"

#include "Host/Connection/UserFolders.h"
#include "Platform/Foundation/JsonWriter.h"
#include "Platform/Foundation/Localization.h"
#include "Platform/Views/ViewWriter.h"

#include <fmt/format.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

namespace host {
namespace {

namespace fs = std::filesystem;
using platform::FileError;
using platform::JsonWriter;

constexpr std::string_view ending = ".tile";

std::string pathOf(const fs::path& folder, InstanceId id) {
    return (folder / fmt::format("{}{}", id, ending)).string();
}

/// Returns the name of the finished file: "3.tile" for itself, ".3.tile.new" and ".3.tile.new1".
std::string_view finishedName(std::string_view name) {
    return name.starts_with('.') ? name.substr(1, name.rfind(".new") - 1) : name;
}

/// Returns all that the entry depends on, in one line.
std::string keyOf(const Instance& instance, const std::string& renderingMode) {
    std::string text;
    JsonWriter out(text);
    out.beginObject().member("extension", instance.extension).member("kind", instance.kind);
    out.member("family", instance.family).key("configuration").beginObject();
    for (const auto& [name, choice] : instance.configuration) {
        out.textKey(name).text(choice);
    }
    out.endObject().member("renderingMode", renderingMode).key("languages").beginArray();
    for (const std::string& language : platform::preferredLanguages(platform::languageSettingsOfEnvironment())) {
        out.text(language);
    }
    out.endArray().endObject();
    return text;
}

/// Removes the first line of `text`, and returns it without its newline.
std::string_view takeLine(std::string_view& text) {
    const std::string_view line = text.substr(0, text.find('\n'));
    text.remove_prefix(std::min(line.size() + 1, text.size()));
    return line;
}

/// Makes the folder if it does not exist, and sets its permissions.
std::optional<FileError> prepare(const fs::path& folder) {
    if (!folder.is_absolute()) {
        return FileError{"there is no place for entries: neither XDG_CACHE_HOME nor HOME is an absolute path"};
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

std::optional<StoredEntry> EntryStore::load(const Instance& instance, const std::string& renderingMode) const {
    const auto file = folder_.is_absolute() ? files_.read(pathOf(folder_, instance.id)) : std::nullopt;
    std::string_view rest = file ? file->bytes() : std::string_view();
    const auto made = platform::fromRfc3339(takeLine(rest));
    if (!made || takeLine(rest) != keyOf(instance, renderingMode)) {
        return std::nullopt;
    }
    simdjson::dom::parser parser;
    Json result;
    if (parser.parse(rest).get(result) != simdjson::SUCCESS) {
        return std::nullopt;
    }
    auto timeline = readTimeline(result);
    return timeline ? std::optional(StoredEntry{std::move(timeline->entries.front()), *made, timeline->reload})
                    : std::nullopt;
}

std::optional<FileError> EntryStore::save(const Instance& instance, const std::string& renderingMode,
                                          const StoredEntry& entry) const {
    if (auto failure = prepare(folder_)) {
        return failure;
    }
    std::string timeline;
    JsonWriter out(timeline);
    out.beginObject().key("entries").beginArray().beginObject().member("date", toRfc3339(entry.entry.date));
    out.key("content").beginObject();
    if (entry.entry.widgetURL) {
        out.member("widgetURL", *entry.entry.widgetURL);
    }
    platform::writeView(out.key("view"), entry.entry.view);
    out.endObject().endObject().endArray();
    out.key("reload").beginObject().member("date", toRfc3339(entry.reload)).endObject().endObject();
    return files_.replaceUnflushed(pathOf(folder_, instance.id), fmt::format("{}\n{}\n{}\n", toRfc3339(entry.made),
                                                                             keyOf(instance, renderingMode), timeline));
}

void EntryStore::keepOnly(const std::set<InstanceId>& ids) const {
    std::error_code failure;
    if (!folder_.is_absolute()) {
        return;
    }
    std::set<std::string, std::less<>> kept;
    for (const InstanceId id : ids) {
        kept.insert(pathOf({}, id));
    }
    std::vector<fs::path> others;
    for (fs::directory_iterator each(folder_, failure), end; !failure && each != end; each.increment(failure)) {
        const std::string file = each->path().filename();
        const std::string_view name = finishedName(file);
        if (name.ends_with(ending) && !kept.contains(name)) {
            others.push_back(each->path());
        }
    }
    for (const fs::path& path : others) {
        fs::remove(path, failure);
    }
}

fs::path tileFolder() {
    return userCacheFolder() / "widgethost" / "tiles";
}

} // namespace host
