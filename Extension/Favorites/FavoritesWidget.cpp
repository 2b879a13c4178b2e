#include "Extension/Favorites/FavoritesWidget.h"

#include "Extension/Favorites/FavoritesViews.h"
#include "Platform/Foundation/Localization.h"

namespace foliovault {

using namespace platform;

std::unique_ptr<Widget> FavoritesWidget::body() const {
    const auto samples = [provider = provider] { return std::vector{provider.placeholder()}; };
    const auto nothing = [] { return std::vector{FavoritesEntry{.date = SystemClock::shared().now()}}; };
    return std::make_unique<IntentWidget<FavoritesProvider>>(IntentConfiguration<FavoritesProvider>{
        .kind = kind,
        .provider = provider,
        .content = [](const FavoritesEntry& entry,
                      const Environment& environment) { return FavoritesEntryView{entry}.body(environment); },
        .displayName = localized("Favorites"),
        .description = localized("Shows your FOLIOvault favorites on the desktop."),
        .families = {WidgetFamily::small, WidgetFamily::medium, WidgetFamily::large, WidgetFamily::extraLarge},
        .previews = {{"Favorites Small", WidgetFamily::small, samples},
                     {"Favorites Medium", WidgetFamily::medium, samples},
                     {"Favorites Large", WidgetFamily::large, samples},
                     {"Favorites Empty", WidgetFamily::small, nothing}},
    });
}

} // namespace foliovault
