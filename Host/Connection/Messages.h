// The protocol's results as values: what a host reads out of an extension's answers.
//
// Answers come from another process and are read with distrust: what is missing or of another type is left out, and an
// answer that makes no sense without it is refused with a reason, one clear line.
#pragma once

#include "Platform/Foundation/Date.h"
#include "Platform/Foundation/Expected.h"
#include "Platform/Views/View.h"

#include <optional>
#include <string>
#include <string_view>
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
    /// What the configuration is about; may be empty.
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
    /// Where a click that meets no link goes.
    std::optional<std::string> widgetURL;
    /// The entry as the protocol carries it.
    std::string json;
};

template <class Value>
using Message = platform::Expected<Value, std::string>;

Message<std::vector<WidgetInfo>> readDescription(std::string_view answer);
Message<std::vector<PreviewInfo>> readPreviews(std::string_view answer);
Message<OptionsInfo> readOptions(std::string_view answer);

/// The entries of a `timeline` or `preview` answer, or the one of a `snapshot` or `placeholder`; at least one, sorted
/// by date, whatever order they came in.
Message<std::vector<Entry>> readEntries(std::string_view answer);

/// The entry to show at `now`: the last that is not later, or the first of those to come. Takes sorted entries, at
/// least one.
std::vector<Entry>::const_iterator entryAt(const std::vector<Entry>& entries, platform::Date now);

struct Timeline {
    /// At least one, sorted by date.
    std::vector<Entry> entries;
    /// The earliest moment to ask again.
    platform::Date reload;
    /// The files that the entries were made from, by their paths below the user's home: what the extension says, at
    /// most `maxWatches`.
    std::vector<std::string> watches;
    static constexpr std::size_t maxWatches = 64;
};
Message<Timeline> readTimeline(std::string_view answer);

/// The "result" of an answer, as the extension wrote it.
Message<std::string> readResult(std::string_view answer);

} // namespace host
