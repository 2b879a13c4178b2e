#include "Extension/Shared/FOLIOvaultPaths.h"

namespace foliovault {

FOLIOvaultPaths::FOLIOvaultPaths(const platform::UserDatabase& users)
    : realHome(users.recordedHome().value_or(users.processHome())),
      appSupportURL(platform::URL::filePath(realHome).appending("Library/Application Support/FOLIOvault")),
      favoritesURL(appSupportURL.appending("Favorites.plist")),
      readingListURL(appSupportURL.appending("ReadingList.plist")),
      workspacesURL(appSupportURL.appending("OrderedWorkspaces.plist")) {}

const FOLIOvaultPaths& FOLIOvaultPaths::shared() {
    static const FOLIOvaultPaths paths(platform::SystemUserDatabase::shared());
    return paths;
}

} // namespace foliovault
