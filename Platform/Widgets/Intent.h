// A widget's configuration: what the user may choose for each placed widget.
//
// An intent is a plain record with a member for each choice, at its default when new, and a static `description()` that
// declares those members to the host:
//
//     struct FavoritesIntent {
//         FavoritesGroupOption group = FavoritesGroupOption::all();
//         static IntentDescription<FavoritesIntent> description() {
//             return {.title = …, .description = …, .parameters = {entityParameter(&FavoritesIntent::group, …)}};
//         }
//     };
//
// A choice travels as the text of its `id`; its `title` is shown, in the user's language.
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

/// Which of an entity's choices are requested: all that are suggested, those that match a text, or those of the given
/// ids.
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
    /// An enumeration's choices, all there are; empty for an entity.
    std::vector<Choice> cases;
};

template <class Intent>
struct IntentParameter {
    ParameterDescription description;
    /// Sets the member to the choice of that id; false if there is no such choice.
    std::function<bool(Intent&, const std::string& id)> assign;
    /// An entity's choices; for an enumeration not set.
    std::function<std::vector<Choice>(const ChoiceRequest&)> choices;
};

template <class Intent>
struct IntentDescription {
    std::string title;
    std::string description;
    std::vector<IntentParameter<Intent>> parameters;
};

/// A parameter whose type is an enumeration `Case`, for which these stand beside it (found by its namespace):
/// `allCases(Case)`, a range of all in the order offered; `rawValue(Case)`, the id; `displayTitle(Case)`.
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

/// A parameter whose type is an entity: a value that is remembered by its `id` and shown by its
/// `displayRepresentation()`. `Query` offers `entities(for identifiers)` as `entitiesFor`, `suggestedEntities`,
/// `entitiesMatching` and `defaultResult`. Any id is accepted: what it names may have gone, or not have come yet.
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
