#include "Extension/Shared/FOLIOvaultPaths.h"

namespace foliovault {
namespace {

std::string realHomeOf(const platform::UserDatabase& users) {
    auto recorded = users.recordedHome();
    return recorded ? *std::move(recorded) : users.processHome();
}

} // namespace

FOLIOvaultPaths::FOLIOvaultPaths(const platform::UserDatabase& users)
    : realHome(realHomeOf(users)),
      appSupportURL(platform::URL::filePath(realHome).appending("Library/Application Support/FOLIOvault")),
      favoritesURL(appSupportURL.appending("Favorites.plist")),
      readingListURL(appSupportURL.appending("ReadingList.plist")),
      workspacesURL(appSupportURL.appending("OrderedWorkspaces.plist")) {}

const FOLIOvaultPaths& FOLIOvaultPaths::shared() {
    static const FOLIOvaultPaths paths(platform::SystemUserDatabase::shared());
    return paths;
}

} // namespace foliovault
