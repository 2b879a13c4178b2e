#include "Platform/Widgets/Widget.h"

namespace platform {

std::string notAccepted(std::string_view what, std::string_view name, const std::vector<std::string>& accepted) {
    std::string message = "no ";
    message.append(what).append(" \"").append(name).append("\"; accepted: ");
    if (accepted.empty()) {
        return message + "none";
    }
    for (const std::string& one : accepted) {
        message += (&one == &accepted.front() ? "\"" : ", \"") + one + "\"";
    }
    return message;
}

std::vector<std::string> parameterNames(const std::vector<ParameterDescription>& parameters) {
    std::vector<std::string> names;
    for (const ParameterDescription& parameter : parameters) {
        names.push_back(parameter.name);
    }
    return names;
}

std::vector<std::string> choiceIds(const std::vector<Choice>& choices) {
    std::vector<std::string> ids;
    for (const Choice& choice : choices) {
        ids.push_back(choice.id);
    }
    return ids;
}

} // namespace platform
