#include "Host/Connection/Messages.h"

#include "Platform/Views/ViewReader.h"

#include <simdjson.h>

#include <algorithm>

namespace host {
namespace {

using platform::Date;
using platform::Failure;
using platform::Outcome;
using platform::Unexpected;
using simdjson::dom::array;

Unexpected<Failure> protocolError(std::string_view what) {
    return platform::unavailable("the extension's answer is invalid: " + std::string(what));
}

std::string textOf(Json object, std::string_view name) {
    std::string_view text;
    return object[name].get(text) == simdjson::SUCCESS ? std::string(text) : std::string();
}

/// Returns an empty text if the element is not a text.
std::string textIn(Json element) {
    std::string_view text;
    return std::string(element.get(text) == simdjson::SUCCESS ? text : "");
}

/// Reads the list under `name` with `read`, element by element.
template <class Read>
auto valuesOf(Json object, std::string_view name, Read read) {
    std::vector<decltype(read(Json()))> values;
    array list;
    if (object[name].get(list) == simdjson::SUCCESS) {
        for (const Json each : list) {
            values.push_back(read(each));
        }
    }
    return values;
}

ChoiceInfo choiceOf(Json choice) {
    return {textOf(choice, "id"), textOf(choice, "title")};
}

ParameterInfo parameterOf(Json parameter) {
    return {.name = textOf(parameter, "name"),
            .title = textOf(parameter, "title"),
            .type = textOf(parameter, "type"),
            .typeName = textOf(parameter, "typeName"),
            .defaultId = textOf(parameter, "default"),
            .cases = valuesOf(parameter, "cases", choiceOf)};
}

WidgetInfo widgetOf(Json widget) {
    Json configuration;
    const bool isConfigurable = widget["configuration"].get(configuration) == simdjson::SUCCESS;
    return {.kind = textOf(widget, "kind"),
            .displayName = textOf(widget, "displayName"),
            .description = textOf(widget, "description"),
            .families = valuesOf(widget, "families", textIn),
            .configurationDescription = isConfigurable ? textOf(configuration, "description") : "",
            .parameters =
                isConfigurable ? valuesOf(configuration, "parameters", parameterOf) : std::vector<ParameterInfo>()};
}

std::optional<Date> dateOf(Json entry) {
    return platform::fromRfc3339(textOf(entry, "date"));
}

Outcome<Entry> entryOf(Json json) {
    const auto date = dateOf(json);
    Json content;
    Json node;
    if (!date || json["content"].get(content) != simdjson::SUCCESS || content["view"].get(node) != simdjson::SUCCESS) {
        return protocolError("an entry lacks its date or its view");
    }
    auto view = platform::readView(node);
    if (!view) {
        return protocolError(view.error());
    }
    std::string_view url;
    const bool hasUrl = content["widgetURL"].get(url) == simdjson::SUCCESS;
    return Entry{
        .date = *date, .view = *std::move(view), .widgetURL = hasUrl ? std::optional(std::string(url)) : std::nullopt};
}

/// Returns the entries of a timeline, sorted by date, or the one entry that `result` is.
std::vector<Json> entryNodes(Json result) {
    array list;
    if (result["entries"].get(list) != simdjson::SUCCESS) {
        return {result};
    }
    std::vector<Json> nodes(list.begin(), list.end());
    std::stable_sort(nodes.begin(), nodes.end(), [](Json a, Json b) { return dateOf(a) < dateOf(b); });
    return nodes;
}

} // namespace

Outcome<std::vector<WidgetInfo>> readDescription(Json result) {
    return valuesOf(result, "widgets", widgetOf);
}

Outcome<std::vector<PreviewInfo>> readPreviews(Json result) {
    return valuesOf(result, "previews", [](Json preview) {
        return PreviewInfo{textOf(preview, "kind"), textOf(preview, "name"), textOf(preview, "family")};
    });
}

Outcome<OptionsInfo> readOptions(Json result) {
    Json defaultChoice;
    if (result["default"].get(defaultChoice) != simdjson::SUCCESS) {
        return protocolError("no options");
    }
    return OptionsInfo{valuesOf(result, "options", choiceOf), choiceOf(defaultChoice)};
}

Outcome<std::vector<Entry>> readEntries(Json result) {
    std::vector<Entry> entries;
    for (const Json node : entryNodes(result)) {
        auto entry = entryOf(node);
        if (!entry) {
            return Unexpected{entry.error()};
        }
        entries.push_back(*std::move(entry));
    }
    if (entries.empty()) {
        return protocolError("a timeline without entries");
    }
    return entries;
}

Outcome<std::string> readEntryText(Json result, Date now) {
    const auto entries = readEntries(result);
    if (!entries) {
        return Unexpected{entries.error()};
    }
    const auto index = static_cast<std::size_t>(entryAt(*entries, now) - entries->begin());
    return simdjson::minify(entryNodes(result)[index]);
}

Outcome<std::string> readText(Json result) {
    return std::string(simdjson::minify(result));
}

std::vector<Entry>::const_iterator entryAt(const std::vector<Entry>& entries, Date now) {
    const auto next = std::upper_bound(entries.begin(), entries.end(), now,
                                       [](Date date, const Entry& entry) { return date < entry.date; });
    return next == entries.begin() ? next : std::prev(next);
}

Outcome<Timeline> readTimeline(Json result) {
    Json reload;
    if (result["reload"].get(reload) != simdjson::SUCCESS) {
        return protocolError("a timeline without a reload date");
    }
    const auto date = platform::fromRfc3339(textOf(reload, "date"));
    if (!date) {
        return protocolError("an invalid reload date");
    }
    auto entries = readEntries(result);
    if (!entries) {
        return Unexpected{entries.error()};
    }
    auto watches = valuesOf(result, "watches", textIn);
    watches.resize(std::min(watches.size(), Timeline::maxWatches));
    return Timeline{.entries = *std::move(entries), .reload = *date, .watches = std::move(watches)};
}

} // namespace host
