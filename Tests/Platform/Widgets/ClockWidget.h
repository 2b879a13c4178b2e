// A widget for tests, with an enumeration and an entity to choose from, that shows its request.
#pragma once

#include "Platform/Views/Text.h"
#include "Platform/Widgets/WidgetBundle.h"

#include <array>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>

namespace platform::testing {

enum class Face { digital, analog };
inline std::array<Face, 2> allCases(Face /*any*/) {
    return {Face::digital, Face::analog};
}
inline std::string_view rawValue(Face face) {
    return face == Face::digital ? "digital" : "analog";
}
inline std::string displayTitle(Face face) {
    return face == Face::digital ? "Digital" : "Analog";
}

struct City {
    std::string id;
    std::string displayRepresentation() const { return "City of " + id; }
};

struct CityQuery {
    std::vector<City> entitiesFor(std::span<const std::string> ids) const {
        std::vector<City> cities;
        for (const std::string& id : ids) {
            cities.push_back({id});
        }
        return cities;
    }
    std::vector<City> suggestedEntities() const { return {{"Rome"}, {"Lima"}}; }
    std::vector<City> entitiesMatching(std::string_view text) const { return {{"Like " + std::string(text)}}; }
    City defaultResult() const { return {"Rome"}; }
};

struct ClockIntent {
    Face face = Face::digital;
    City city{"Rome"};

    static IntentDescription<ClockIntent> description() {
        return {.title = "Clock",
                .description = "Shows the time.",
                .parameters = {enumerationParameter(&ClockIntent::face, "face", "Face", "Clock Face"),
                               entityParameter(&ClockIntent::city, CityQuery{}, "city", "City", "City")}};
    }
};

struct ClockEntry {
    Date date;
    std::string line;
};

struct ClockProvider {
    using Entry = ClockEntry;
    using Intent = ClockIntent;

    /// Called for every timeline request with the chosen city; `goOn` finishes it.
    std::function<void(const std::string& city, std::function<void()> goOn)> whileWorking;

    ClockEntry placeholder() const { return {Date{0}, "placeholder"}; }
    ClockEntry snapshot(const ClockIntent& intent) const {
        return {Date{1.5}, std::string(rawValue(intent.face)) + " in " + intent.city.id};
    }
    void timeline(const ClockIntent& intent, const std::function<void(const Timeline<ClockEntry>&)>& finish) const {
        const auto goOn = [this, intent, finish] {
            finish({.entries = {snapshot(intent), {Date{2}, "later"}},
                    .reload = {Date{300}},
                    .watches = {"Clocks/" + intent.city.id, "Cities"}});
        };
        whileWorking ? whileWorking(intent.city.id, goOn) : goOn();
    }
};

inline WidgetBundle clockBundle(decltype(ClockProvider::whileWorking) whileWorking = nullptr) {
    WidgetBundle bundle{.identifier = "example.clock", .widgets = {}};
    bundle.widgets.push_back(std::make_unique<IntentWidget<ClockProvider>>(IntentConfiguration<ClockProvider>{
        .kind = "Clock",
        .provider = {std::move(whileWorking)},
        .content =
            [](const ClockEntry& entry, const Environment& environment) {
                const bool full = environment.renderingMode == RenderingMode::fullColor;
                return text(entry.line + ", " + std::string(familyName(environment.family)) + (full ? "" : ", muted"));
            },
        .families = {WidgetFamily::small, WidgetFamily::extraLarge},
        .widgetURL = [](const ClockEntry& entry) -> std::optional<std::string> {
            return entry.line == "later" ? std::optional<std::string>("clock://later") : std::nullopt;
        },
        .previews = {{"Ticking", WidgetFamily::extraLarge,
                      [] {
                          return std::vector{ClockEntry{Date{0}, "tick"}};
                      }},
                     {"Broken", WidgetFamily::small,
                      []() -> std::vector<ClockEntry> { throw std::runtime_error("the spring broke"); }}},
    }));
    return bundle;
}

} // namespace platform::testing
