#include "Host/Connection/DeclaredChoices.h"

#include <fmt/format.h>

#include <algorithm>

namespace host {
namespace {

using platform::Failure;
using platform::Outcome;
using platform::Unexpected;

Failure notAccepted(const std::string& what, const std::string& name, const std::vector<std::string>& accepted) {
    const std::string names = accepted.empty() ? "none" : fmt::format("\"{}\"", fmt::join(accepted, "\", \""));
    return {Failure::Kind::usage, fmt::format("no {} \"{}\"; accepted: {}", what, name, names)};
}

template <class Value>
std::vector<std::string> names(const std::vector<Value>& values, std::string Value::*name) {
    std::vector<std::string> all;
    for (const Value& value : values) {
        all.push_back(value.*name);
    }
    return all;
}

/// Returns the value whose `name` is `wanted`, or null.
template <class Value>
const Value* find(const std::vector<Value>& values, std::string Value::*name, const std::string& wanted) {
    const auto found = std::ranges::find(values, wanted, name);
    return found == values.end() ? nullptr : &*found;
}

bool contains(const std::vector<std::string>& names, const std::string& name) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

} // namespace

Outcome<WidgetInfo> declaredWidget(const std::vector<WidgetInfo>& widgets, const std::string& kind) {
    const WidgetInfo* widget = find(widgets, &WidgetInfo::kind, kind);
    if (widget == nullptr) {
        return Unexpected{notAccepted("kind", kind, names(widgets, &WidgetInfo::kind))};
    }
    return *widget;
}

Failure unknownWidget(const std::string& kind) {
    return {Failure::Kind::usage, "no installed extension has the widget " + kind};
}

Outcome<std::string> declaredFamily(const WidgetInfo& widget, const std::optional<std::string>& family) {
    if (!family && !widget.families.empty()) {
        return contains(widget.families, "medium") ? std::string("medium") : widget.families.front();
    }
    const std::string wanted = family.value_or("medium");
    if (!contains(widget.families, wanted)) {
        return Unexpected{notAccepted("family", wanted, widget.families)};
    }
    return wanted;
}

std::optional<Failure> checkSettings(const WidgetInfo& widget, const std::map<std::string, std::string>& settings) {
    for (const auto& [name, choice] : settings) {
        const ParameterInfo* parameter = find(widget.parameters, &ParameterInfo::name, name);
        if (parameter == nullptr) {
            return notAccepted("parameter", name, names(widget.parameters, &ParameterInfo::name));
        }
        if (parameter->type == "enumeration" && find(parameter->cases, &ChoiceInfo::id, choice) == nullptr) {
            return notAccepted("choice of \"" + name + "\"", choice, names(parameter->cases, &ChoiceInfo::id));
        }
    }
    return std::nullopt;
}

} // namespace host
