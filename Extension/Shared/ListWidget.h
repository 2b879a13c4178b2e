// Declares a list widget to the host: what is the same for every list, around what is the widget's own.
#pragma once

#include "Platform/Widgets/Widget.h"

#include <memory>
#include <string>
#include <vector>

namespace foliovault {

/// The names of a list widget's previews: the sample items in three families, and a list without items.
struct ListPreviewNames {
    std::string small;
    std::string medium;
    std::string large;
    std::string empty;
};

/// The widget of that kind in all families, called and described as its intent is. `Provider` is a `ListProvider`,
/// `EntryView` is made of an entry and has a `body(environment)`.
template <class EntryView, class Provider>
std::unique_ptr<platform::Widget> listWidget(std::string kind, const Provider& provider,
                                             const ListPreviewNames& names) {
    using platform::WidgetFamily;
    using Entry = typename Provider::Entry;
    const auto intent = Provider::Intent::description();
    const auto samples = [provider] { return std::vector{provider.placeholder()}; };
    const auto nothing = [provider] { return std::vector{provider.emptyEntry()}; };
    return std::make_unique<platform::IntentWidget<Provider>>(platform::IntentConfiguration<Provider>{
        .kind = std::move(kind),
        .provider = provider,
        .content = [](const Entry& entry,
                      const platform::Environment& environment) { return EntryView{entry}.body(environment); },
        .displayName = intent.title,
        .description = intent.description,
        .previews = {{names.small, WidgetFamily::small, samples},
                     {names.medium, WidgetFamily::medium, samples},
                     {names.large, WidgetFamily::large, samples},
                     {names.empty, WidgetFamily::small, nothing}},
    });
}

} // namespace foliovault
