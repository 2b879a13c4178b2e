// A widget's configuration: the user's choices for each placed widget.
//
// An intent is a record with a member for each choice, initialized to its default, and a static `description()` of
// those members for the host:
//
//     struct FavoritesIntent {
//         FavoritesGroupOption group = FavoritesGroupOption::all();
//         static IntentDescription<FavoritesIntent> description() {
//             return {.title = …, .description = …, .parameters = {entityParameter(&FavoritesIntent::group, …)}};
//         }
//     };
//
// The protocol sends the `id` of a choice. The user sees its `title`, in the user's language.
#pragma once

#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace platform {

struct Choice {
    std::string id;
    std::string title;
    friend bool operator==(const Choice&, const Choice&) = default;
};

enum class ParameterType { enumeration, entity };

/// The requested choices of an entity: those that match a text, those of the given ids, or by default all suggestions.
struct ChoiceRequest {
    std::optional<std::string> matching;
    std::optional<std::vector<std::string>> identifiers;
};

struct ParameterDescription {
    std::string name;
    std::string title;
    ParameterType type = ParameterType::enumeration;
    std::string typeName;
    Choice defaultChoice;
    /// All choices of an enumeration; empty for an entity.
    std::vector<Choice> cases;
};

template <class Intent>
struct IntentParameter {
    ParameterDescription description;
    /// Sets the member to the choice of that id. Returns false if it does not exist.
    std::function<bool(Intent&, const std::string& id)> assign;
    /// The choices of an entity; not set for an enumeration.
    std::function<std::vector<Choice>(const ChoiceRequest&)> choices;
};

template <class Intent>
struct IntentDescription {
    std::string title;
    std::string description;
    std::vector<IntentParameter<Intent>> parameters;
};

/// Returns a parameter whose type is an enumeration `Case`. Requires these functions in its namespace: `allCases(Case)`
/// returns all in their order, `rawValue(Case)` the id, `displayTitle(Case)` the title.
template <class Intent, class Case>
IntentParameter<Intent> enumerationParameter(Case Intent::*member, std::string name, std::string title,
                                             std::string typeName) {
    const auto choiceOf = [](Case value) { return Choice{std::string(rawValue(value)), displayTitle(value)}; };
    std::vector<Choice> cases;
    for (const Case value : allCases(Case{})) {
        cases.push_back(choiceOf(value));
    }
    return {.description = {.name = std::move(name),
                            .title = std::move(title),
                            .type = ParameterType::enumeration,
                            .typeName = std::move(typeName),
                            .defaultChoice = choiceOf(Intent{}.*member),
                            .cases = std::move(cases)},
            .assign =
                [member](Intent& intent, const std::string& id) {
                    for (const Case value : allCases(Case{})) {
                        if (rawValue(value) == id) {
                            intent.*member = value;
                            return true;
                        }
                    }
                    return false;
                },
            .choices = nullptr};
}

/// Returns a parameter whose type is an entity: a value with an `id` and a `displayRepresentation()`. Requires `Query`
/// to have `entitiesFor`, `suggestedEntities`, `entitiesMatching` and `defaultResult`. Accepts every id, since its
/// entity may be gone, or not exist yet.
template <class Intent, class Entity, class Query>
IntentParameter<Intent> entityParameter(Entity Intent::*member, Query query, std::string name, std::string title,
                                        std::string typeName) {
    const auto choiceOf = [](const Entity& entity) { return Choice{entity.id, entity.displayRepresentation()}; };
    return {.description = {.name = std::move(name),
                            .title = std::move(title),
                            .type = ParameterType::entity,
                            .typeName = std::move(typeName),
                            .defaultChoice = choiceOf(query.defaultResult()),
                            .cases = {}},
            .assign =
                [member, query](Intent& intent, const std::string& id) {
                    auto entities = query.entitiesFor(std::span(&id, 1));
                    if (entities.empty()) {
                        return false;
                    }
                    intent.*member = std::move(entities.front());
                    return true;
                },
            .choices =
                [query, choiceOf](const ChoiceRequest& request) {
                    const auto entities = request.matching      ? query.entitiesMatching(*request.matching)
                                          : request.identifiers ? query.entitiesFor(*request.identifiers)
                                                                : query.suggestedEntities();
                    std::vector<Choice> choices;
                    choices.reserve(entities.size());
                    for (const Entity& entity : entities) {
                        choices.push_back(choiceOf(entity));
                    }
                    return choices;
                }};
}

} // namespace platform
