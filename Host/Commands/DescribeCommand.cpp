#include "Host/Commands/DescribeCommand.h"

#include "Host/Connection/Requests.h"

#include <fmt/format.h>

namespace host {
namespace {

std::string asText(const WidgetInfo& widget) {
    std::string text = fmt::format("{}  {}\n    {}\n    families: {}\n", widget.kind, widget.displayName,
                                   widget.description, fmt::join(widget.families, ", "));
    for (const ParameterInfo& parameter : widget.parameters) {
        text += fmt::format("    {}: {}", parameter.name, parameter.title);
        if (parameter.cases.empty()) {
            text += fmt::format(", a {}; default {}", parameter.typeName, parameter.defaultId);
        }
        text += '\n';
        for (const ChoiceInfo& choice : parameter.cases) {
            text += fmt::format("        {}  {}{}\n", choice.id, choice.title,
                                choice.id == parameter.defaultId ? " (default)" : "");
        }
    }
    return text;
}

} // namespace

std::optional<Failure> describe(const ExtensionChoice& choice, TextFormat format) {
    std::string text;
    auto failure = useExtensions(choice, [&](const DescribedExtension& each) {
        if (format == TextFormat::json) {
            text += each.description.text + '\n';
        } else {
            for (const WidgetInfo& widget : each.description.widgets) {
                text += asText(widget);
            }
        }
        return false;
    });
    return failure ? std::move(failure) : writeOutput(text, std::nullopt);
}

std::optional<Failure> listOptions(const ExtensionChoice& choice, const OptionsRequest& request, TextFormat format) {
    const auto extension = openExtensionFor(request.kind, choice);
    if (!extension) {
        return extension.error();
    }
    const std::string params =
        paramsOf({{"kind", request.kind}, {"parameter", request.parameter}, {"matching", request.matching}});
    if (format == TextFormat::json) {
        const auto result = PendingResponse(**extension, "options", params, readText).wait();
        return result ? writeOutput(*result + '\n', std::nullopt) : std::optional(result.error());
    }
    const auto options = PendingResponse(**extension, "options", params, readOptions).wait();
    if (!options) {
        return options.error();
    }
    std::string text;
    for (const ChoiceInfo& option : options->options) {
        text += fmt::format("{}  {}{}\n", option.id, option.title,
                            option.id == options->defaultChoice.id ? " (default)" : "");
    }
    return writeOutput(text, std::nullopt);
}

} // namespace host
