#include "Extension/Bundle/FOLIOvaultWidgetBundle.h"

#include "Extension/Favorites/FavoritesWidget.h"
#include "Extension/ReadingList/ReadingListWidget.h"
#include "Extension/Shared/ExtensionIdentity.h"
#include "Extension/Tips/TipStore.h"
#include "Extension/Tips/TipsWidget.h"
#include "Extension/Workspaces/WorkspacesWidget.h"
#include "Platform/Foundation/Localization.h"

namespace foliovault {

std::vector<std::unique_ptr<platform::Widget>> FOLIOvaultWidgetBundle::body() const {
    std::vector<std::unique_ptr<platform::Widget>> widgets;
    widgets.push_back(ReadingListWidget().body());
    widgets.push_back(FavoritesWidget().body());
    widgets.push_back(WorkspacesWidget().body());
    widgets.push_back(TipsWidget().body());
    return widgets;
}

int FOLIOvaultWidgetBundle::main() {
    platform::startLocalization("foliovault-widgets");
    return platform::runBundle(
        {.identifier = extensionIdentifier, .widgets = FOLIOvaultWidgetBundle().body(), .inputEnded = [] {
             sharedWebClient().endSoon();
             TipStore::shared().finish();
         }});
}

} // namespace foliovault
