// The protocol's results as values.
//
// Results come from another process and are not trusted: members that are missing or of another type are left out. If
// one of them is required, the result is a failure, `unavailable`.
#pragma once

#include "Platform/Foundation/Date.h"
#include "Platform/Foundation/Failure.h"
#include "Platform/Views/View.h"

#include <simdjson.h>

#include <optional>
#include <string>
#include <vector>

namespace host {

struct ChoiceInfo {
    std::string id;
    std::string title;
};

struct ParameterInfo {
    std::string name;
    std::string title;
    /// "enumeration" or "entity".
    std::string type;
    std::string typeName;
    std::string defaultId;
    /// An enumeration's choices.
    std::vector<ChoiceInfo> cases;
};

struct WidgetInfo {
    std::string kind;
    std::string displayName;
    std::string description;
    std::vector<std::string> families;
    /// A description of the configuration; may be empty.
    std::string configurationDescription;
    std::vector<ParameterInfo> parameters;
};

struct PreviewInfo {
    std::string kind;
    std::string name;
    std::string family;
};

struct OptionsInfo {
    std::vector<ChoiceInfo> options;
    ChoiceInfo defaultChoice;
};

struct Entry {
    platform::Date date;
    platform::View view;
    /// Opened by a click beside all links.
    std::optional<std::string> widgetURL;
};

/// Results are JSON objects.
using Json = simdjson::dom::element;

platform::Outcome<std::vector<WidgetInfo>> readDescription(Json result);
platform::Outcome<std::vector<PreviewInfo>> readPreviews(Json result);
platform::Outcome<OptionsInfo> readOptions(Json result);

/// Returns the entries of a `timeline` or `preview`, or the one of a `snapshot` or `placeholder`; at least one, sorted
/// by date.
platform::Outcome<std::vector<Entry>> readEntries(Json result);

/// Returns the entry to show at `now`, as the extension wrote it, on one line.
platform::Outcome<std::string> readEntryText(Json result, platform::Date now);

/// Returns the result as the extension wrote it, on one line.
platform::Outcome<std::string> readText(Json result);

/// Returns the entry to show at `now`: the last one that is not later, or else the first. Requires sorted entries, at
/// least one.
std::vector<Entry>::const_iterator entryAt(const std::vector<Entry>& entries, platform::Date now);

struct Timeline {
    /// At least one, sorted by date.
    std::vector<Entry> entries;
    /// The earliest date of the next request.
    platform::Date reload;
    /// The files that the entries were made from, by their paths below the user's home; at most `maxWatches`.
    std::vector<std::string> watches;
    static constexpr std::size_t maxWatches = 64;
};
platform::Outcome<Timeline> readTimeline(Json result);

} // namespace host
