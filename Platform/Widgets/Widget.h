// A widget: its description, and the host's three requests, which return views.
//
// An `IntentWidget` is a widget with an intent, a provider and an entry view, made from an `IntentConfiguration`.
//
// Requests come one after the other on one thread, which no widget may block. A widget that waits for a network replies
// later, on a thread of its own, and makes its views there.
#pragma once

#include "Platform/Foundation/Date.h"
#include "Platform/Foundation/Expected.h"
#include "Platform/Views/View.h"
#include "Platform/Widgets/Environment.h"
#include "Platform/Widgets/Intent.h"
#include "Platform/Widgets/Timeline.h"

#include <algorithm>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace platform {

/// The ids of a placed widget's choices, by the parameter's name. A missing parameter has its default.
using Configuration = std::map<std::string, std::string>;

/// A choice for an unknown parameter, or an unknown value of an enumeration.
struct InvalidChoice {
    std::string message;
};

/// An entry with its view, and the address that a click beside the links opens.
struct EntryContent {
    Date date;
    View view;
    std::string containerBackground;
    std::optional<std::string> widgetURL;
};

struct WidgetDescription {
    std::string kind;
    std::string displayName;
    std::string description;
    std::vector<WidgetFamily> families;
    std::string containerBackground;
    std::vector<ParameterDescription> parameters;
};

struct PreviewDescription {
    std::string name;
    WidgetFamily family = WidgetFamily::medium;
};

using TimelineReply = std::function<void(Expected<Timeline<EntryContent>, InvalidChoice>)>;

class Widget {
  public:
    virtual ~Widget() = default;
    virtual const std::string& kind() const = 0;
    virtual WidgetDescription description() const = 0;

    virtual EntryContent placeholder(const Environment& environment) const = 0;
    virtual Expected<EntryContent, InvalidChoice> snapshot(const Configuration& configuration,
                                                           const Environment& environment) const = 0;
    /// Calls `reply` once: before it returns, or later on another thread.
    virtual void timeline(const Configuration& configuration, const Environment& environment,
                          TimelineReply reply) const = 0;

    /// Returns the choices of a parameter of the description.
    virtual std::vector<Choice> choices(const std::string& parameter, const ChoiceRequest& request) const = 0;

    /// Return the previews in their order, and the entries of the one at `index`.
    virtual std::vector<PreviewDescription> previews() const = 0;
    virtual std::vector<EntryContent> preview(std::size_t index) const = 0;
};

/// Returns the message for an unknown `name` of a `what`: `no kind "Clock"; accepted: "Tips"`.
std::string notAccepted(std::string_view what, std::string_view name, const std::vector<std::string>& accepted);
std::vector<std::string> parameterNames(const std::vector<ParameterDescription>& parameters);
std::vector<std::string> choiceIds(const std::vector<Choice>& choices);

/// The background of the views.
inline constexpr const char* tertiaryFill = "tertiaryFill";

template <class Entry>
struct Preview {
    std::string name;
    WidgetFamily family = WidgetFamily::medium;
    std::function<std::vector<Entry>()> entries;
};

/// The parts of a widget. `Provider` has the types `Entry` (with a member `date`) and `Intent`, and the functions
/// `placeholder()`, `snapshot(intent)` and `timeline(intent)`; or if a timeline must wait, `timeline(intent, finish)`,
/// which calls `finish` once, on any thread. The widget has the intent's title and description.
template <class Provider>
struct IntentConfiguration {
    using Entry = typename Provider::Entry;

    std::string kind;
    Provider provider;
    std::function<View(const Entry&, const Environment&)> content;
    std::vector<WidgetFamily> families = {WidgetFamily::small, WidgetFamily::medium, WidgetFamily::large,
                                          WidgetFamily::extraLarge};
    std::string containerBackground = tertiaryFill;
    /// The address for a click beside the links. One that is longer than `maxLinkLength` is left out.
    std::function<std::optional<std::string>(const Entry&)> widgetURL = nullptr;
    std::vector<Preview<Entry>> previews = {};
};

template <class Provider>
class IntentWidget final : public Widget {
  public:
    using Entry = typename Provider::Entry;
    using Intent = typename Provider::Intent;

    explicit IntentWidget(IntentConfiguration<Provider> configuration)
        : configuration_(std::move(configuration)), intent_(Intent::description()) {}

    const std::string& kind() const override { return configuration_.kind; }

    WidgetDescription description() const override {
        WidgetDescription description{.kind = configuration_.kind,
                                      .displayName = intent_.title,
                                      .description = intent_.description,
                                      .families = configuration_.families,
                                      .containerBackground = configuration_.containerBackground,
                                      .parameters = {}};
        for (const auto& parameter : intent_.parameters) {
            description.parameters.push_back(parameter.description);
        }
        return description;
    }

    EntryContent placeholder(const Environment& environment) const override {
        return contentOf(configuration_.provider.placeholder(), environment);
    }

    Expected<EntryContent, InvalidChoice> snapshot(const Configuration& choices,
                                                   const Environment& environment) const override {
        const auto intent = intentOf(choices);
        if (!intent) {
            return Unexpected{intent.error()};
        }
        return contentOf(configuration_.provider.snapshot(*intent), environment);
    }

    void timeline(const Configuration& choices, const Environment& environment, TimelineReply reply) const override {
        const auto intent = intentOf(choices);
        if (!intent) {
            return reply(Unexpected{intent.error()});
        }
        const auto finish = [this, environment, reply](const Timeline<Entry>& timeline) {
            reply(Timeline<EntryContent>{contentsOf(timeline.entries, environment), timeline.reload, timeline.watches});
        };
        if constexpr (requires { configuration_.provider.timeline(*intent, finish); }) {
            configuration_.provider.timeline(*intent, finish);
        } else {
            finish(configuration_.provider.timeline(*intent));
        }
    }

    std::vector<Choice> choices(const std::string& name, const ChoiceRequest& request) const override {
        for (const auto& parameter : intent_.parameters) {
            if (parameter.description.name == name) {
                return parameter.choices ? parameter.choices(request) : parameter.description.cases;
            }
        }
        return {};
    }

    std::vector<PreviewDescription> previews() const override {
        std::vector<PreviewDescription> descriptions;
        for (const auto& preview : configuration_.previews) {
            descriptions.push_back({preview.name, preview.family});
        }
        return descriptions;
    }

    std::vector<EntryContent> preview(std::size_t index) const override {
        const auto& preview = configuration_.previews.at(index);
        return contentsOf(preview.entries(), {.family = preview.family});
    }

  private:
    EntryContent contentOf(const Entry& entry, const Environment& environment) const {
        auto url = configuration_.widgetURL ? configuration_.widgetURL(entry) : std::nullopt;
        return {.date = entry.date,
                .view = configuration_.content(entry, environment),
                .containerBackground = configuration_.containerBackground,
                .widgetURL = url && url->size() <= maxLinkLength ? std::move(url) : std::nullopt};
    }

    std::vector<EntryContent> contentsOf(const std::vector<Entry>& entries, const Environment& environment) const {
        std::vector<EntryContent> contents;
        contents.reserve(entries.size());
        for (const Entry& entry : entries) {
            contents.push_back(contentOf(entry, environment));
        }
        return contents;
    }

    Expected<Intent, InvalidChoice> intentOf(const Configuration& choices) const {
        Intent intent;
        for (const auto& [name, id] : choices) {
            const auto parameter =
                std::find_if(intent_.parameters.begin(), intent_.parameters.end(),
                             [&name = name](const auto& known) { return known.description.name == name; });
            if (parameter == intent_.parameters.end()) {
                return Unexpected{
                    InvalidChoice{notAccepted("parameter", name, parameterNames(description().parameters))}};
            }
            if (!parameter->assign(intent, id)) {
                return Unexpected{InvalidChoice{notAccepted("choice", id, choiceIds(parameter->description.cases))}};
            }
        }
        return intent;
    }

    IntentConfiguration<Provider> configuration_;
    IntentDescription<Intent> intent_;
};

} // namespace platform
