#include "Extension/Bundle/FOLIOvaultWidgetBundle.h"

#include "Extension/Favorites/FavoritesWidget.h"
#include "Extension/Shared/ExtensionIdentity.h"
#include "Platform/Foundation/Localization.h"

namespace foliovault {

std::vector<std::unique_ptr<platform::Widget>> FOLIOvaultWidgetBundle::body() const {
    std::vector<std::unique_ptr<platform::Widget>> widgets;
    widgets.push_back(FavoritesWidget().body());
    return widgets;
}

int FOLIOvaultWidgetBundle::main() {
    platform::startLocalization("foliovault-widgets");
    return platform::runBundle({.identifier = extensionIdentifier, .widgets = FOLIOvaultWidgetBundle().body()});
}

} // namespace foliovault
