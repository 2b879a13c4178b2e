#include "Host/Connection/Messages.h"

#include "Platform/Views/ViewReader.h"

#include <simdjson.h>

#include <algorithm>

namespace host {
namespace {

using platform::Unexpected;
using simdjson::dom::array;
using simdjson::dom::element;

Unexpected<std::string> senseless(std::string_view what) {
    return {"the extension's answer makes no sense: " + std::string(what)};
}

std::string textOf(element object, std::string_view name) {
    std::string_view text;
    return object[name].get(text) == simdjson::SUCCESS ? std::string(text) : std::string();
}

/// The text that a list has there; empty where that is none.
std::string textIn(element element) {
    std::string_view text;
    return std::string(element.get(text) == simdjson::SUCCESS ? text : "");
}

/// Reads the list under `name` with `read`, element by element.
template <class Read>
auto valuesOf(element object, std::string_view name, Read read) {
    std::vector<decltype(read(element()))> values;
    array list;
    if (object[name].get(list) == simdjson::SUCCESS) {
        for (const element each : list) {
            values.push_back(read(each));
        }
    }
    return values;
}

ChoiceInfo choiceOf(element choice) {
    return {textOf(choice, "id"), textOf(choice, "title")};
}

ParameterInfo parameterOf(element parameter) {
    return {.name = textOf(parameter, "name"),
            .title = textOf(parameter, "title"),
            .type = textOf(parameter, "type"),
            .typeName = textOf(parameter, "typeName"),
            .defaultId = textOf(parameter, "default"),
            .cases = valuesOf(parameter, "cases", choiceOf)};
}

WidgetInfo widgetOf(element widget) {
    element configuration;
    const bool isConfigurable = widget["configuration"].get(configuration) == simdjson::SUCCESS;
    return {.kind = textOf(widget, "kind"),
            .displayName = textOf(widget, "displayName"),
            .description = textOf(widget, "description"),
            .families = valuesOf(widget, "families", textIn),
            .configurationDescription = isConfigurable ? textOf(configuration, "description") : "",
            .parameters =
                isConfigurable ? valuesOf(configuration, "parameters", parameterOf) : std::vector<ParameterInfo>()};
}

Message<Entry> entryOf(element json) {
    const auto date = platform::fromRfc3339(textOf(json, "date"));
    element content;
    element node;
    if (!date || json["content"].get(content) != simdjson::SUCCESS || content["view"].get(node) != simdjson::SUCCESS) {
        return senseless("an entry lacks its date or its view");
    }
    auto view = platform::readView(node);
    if (!view) {
        return senseless(view.error());
    }
    std::string_view url;
    const bool hasUrl = content["widgetURL"].get(url) == simdjson::SUCCESS;
    return Entry{.date = *date,
                 .view = *std::move(view),
                 .widgetURL = hasUrl ? std::optional(std::string(url)) : std::nullopt,
                 .json = simdjson::minify(json)};
}

/// The entries of a timeline, or the one entry that `result` is.
Message<std::vector<Entry>> entriesOf(element result) {
    array list;
    std::vector<element> nodes;
    if (result["entries"].get(list) == simdjson::SUCCESS) {
        for (const element node : list) {
            nodes.push_back(node);
        }
    } else {
        nodes.push_back(result);
    }
    std::vector<Entry> entries;
    for (const element node : nodes) {
        auto entry = entryOf(node);
        if (!entry) {
            return Unexpected{entry.error()};
        }
        entries.push_back(*std::move(entry));
    }
    if (entries.empty()) {
        return senseless("a timeline without entries");
    }
    std::stable_sort(entries.begin(), entries.end(), [](const Entry& a, const Entry& b) { return a.date < b.date; });
    return entries;
}

/// An answer's result, as long as its parser lives.
class Result {
  public:
    explicit Result(std::string_view answer) {
        element message;
        found_ = parser_.parse(answer).get(message) == simdjson::SUCCESS &&
                 message["result"].get(result_) == simdjson::SUCCESS && result_.is_object();
    }
    explicit operator bool() const { return found_; }
    element operator*() const { return result_; }

  private:
    simdjson::dom::parser parser_;
    element result_;
    bool found_ = false;
};

} // namespace

Message<std::vector<WidgetInfo>> readDescription(std::string_view answer) {
    const Result result(answer);
    if (!result) {
        return senseless("no description");
    }
    return valuesOf(*result, "widgets", widgetOf);
}

Message<std::vector<PreviewInfo>> readPreviews(std::string_view answer) {
    const Result result(answer);
    if (!result) {
        return senseless("no previews");
    }
    return valuesOf(*result, "previews", [](element preview) {
        return PreviewInfo{textOf(preview, "kind"), textOf(preview, "name"), textOf(preview, "family")};
    });
}

Message<OptionsInfo> readOptions(std::string_view answer) {
    const Result result(answer);
    element defaultChoice;
    if (!result || (*result)["default"].get(defaultChoice) != simdjson::SUCCESS) {
        return senseless("no options");
    }
    return OptionsInfo{valuesOf(*result, "options", choiceOf), choiceOf(defaultChoice)};
}

Message<std::vector<Entry>> readEntries(std::string_view answer) {
    const Result result(answer);
    return result ? entriesOf(*result) : senseless("no entries");
}

std::vector<Entry>::const_iterator entryAt(const std::vector<Entry>& entries, platform::Date now) {
    const auto next = std::upper_bound(entries.begin(), entries.end(), now,
                                       [](platform::Date date, const Entry& entry) { return date < entry.date; });
    return next == entries.begin() ? next : std::prev(next);
}

Message<Timeline> readTimeline(std::string_view answer) {
    const Result result(answer);
    element reload;
    if (!result || (*result)["reload"].get(reload) != simdjson::SUCCESS) {
        return senseless("a timeline without a reload date");
    }
    const auto date = platform::fromRfc3339(textOf(reload, "date"));
    if (!date) {
        return senseless("a reload date that is none");
    }
    auto entries = entriesOf(*result);
    if (!entries) {
        return Unexpected{entries.error()};
    }
    auto watches = valuesOf(*result, "watches", textIn);
    watches.resize(std::min(watches.size(), Timeline::maxWatches));
    return Timeline{.entries = *std::move(entries), .reload = *date, .watches = std::move(watches)};
}

Message<std::string> readResult(std::string_view answer) {
    const Result result(answer);
    if (!result) {
        return senseless("no result");
    }
    return std::string(simdjson::minify(*result));
}

} // namespace host
