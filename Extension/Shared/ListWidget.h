// Declares a list widget to the host: what is the same for every list, around what is the widget's own.
#pragma once

#include "Platform/Widgets/Widget.h"

#include <memory>
#include <string>
#include <vector>

namespace foliovault {

/// Returns the widget of that kind in all families, with its intent's title and description. `Provider` is a
/// `ListProvider`; `EntryView` is made of an entry and has a `body(environment)`. The previews, the samples in three
/// families and an entry without items, are named after `previewPrefix`: "Favorites Small".
template <class EntryView, class Provider>
std::unique_ptr<platform::Widget> listWidget(std::string kind, const Provider& provider,
                                             const std::string& previewPrefix) {
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
        .previews = {{previewPrefix + "Small", WidgetFamily::small, samples},
                     {previewPrefix + "Medium", WidgetFamily::medium, samples},
                     {previewPrefix + "Large", WidgetFamily::large, samples},
                     {previewPrefix + "Empty", WidgetFamily::small, nothing}},
    });
}

} // namespace foliovault
