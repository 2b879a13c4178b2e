#include "Extension/Tips/TipStore.h"

#include "Extension/Shared/ExtensionIdentity.h"
#include "Extension/Tips/RSSParser.h"
#include "Extension/Tips/TipsCache.h"
#include "Platform/Foundation/Localization.h"
#include "Platform/Foundation/URL.h"
#include "Platform/Foundation/UserDatabase.h"

#include <utility>

namespace foliovault {

using namespace platform;

namespace {

constexpr std::string_view category = "TipStore";

} // namespace

TipStore::TipStore(Dependencies dependencies)
    : dependencies_(std::move(dependencies)), cachePath_(dependencies_.cachesFolder + "/tips_cache.json") {}

TipStore& TipStore::shared() {
    static TipStore store({.files = DiskFileSystem::shared(),
                           .web = sharedWebClient(),
                           .clock = SystemClock::shared(),
                           .log = extensionLog(),
                           .cachesFolder = cachesDirectory(SystemUserDatabase::shared()),
                           .languages = preferredLanguages(languageSettingsOfEnvironment()),
                           .feedHost = FOLIOVAULT_SUPPORT_HOST});
    return store;
}

void TipStore::fetchTips(Completion completion) {
    if (const auto fresh = loadCache(Expiry::checked)) {
        return completion(*fresh);
    }
    const std::scoped_lock lock(mutex_);
    if (!isServing_) {
        thread_ = std::jthread([this] { serveWaiting(); });
        isServing_ = true;
    }
    waiting_.push_back(std::move(completion));
}

void TipStore::serveWaiting() {
    for (bool isDone = false; !isDone;) {
        const auto tips = freshOrDownloaded();
        std::unique_lock lock(mutex_);
        const auto served = std::exchange(waiting_, {});
        lock.unlock();
        for (const Completion& completion : served) {
            completion(tips);
        }
        lock.lock();
        isDone = waiting_.empty();
        isServing_ = !isDone;
    }
}

std::vector<TipItem> TipStore::freshOrDownloaded() const {
    if (auto fresh = loadCache(Expiry::checked)) {
        return *std::move(fresh);
    }
    const auto lastTips = [this] { return loadCache(Expiry::ignored).value_or(std::vector<TipItem>()); };
    const auto address = URL::parse("https://" + dependencies_.feedHost +
                                    "/2/apps/supportmaterials.xml.php?product=FOLIOvault&edition=Pro&version=4&lang=" +
                                    std::string(feedLanguage(dependencies_.languages)));
    if (!address) {
        return lastTips();
    }
    const auto feed = dependencies_.web.get(*address);
    if (!feed) {
        dependencies_.log.write(LogLevel::error, category, "Failed to fetch tips feed: " + feed.error().description);
        return lastTips();
    }
    auto tips = RSSParser::parseTips(feed->bytes());
    if (!tips.empty()) {
        saveCache(tips);
    }
    return tips;
}

std::string_view TipStore::feedLanguage(const std::vector<std::string>& languages) {
    return !languages.empty() && languages.front().starts_with("de") ? "de" : "en";
}

std::optional<std::vector<TipItem>> TipStore::loadCache(Expiry expiry) const {
    const auto file = dependencies_.files.read(cachePath_);
    if (!file || file->size() > maxCacheSize) {
        return std::nullopt;
    }
    auto cache = decodedCache(file->bytes());
    if (!cache ||
        (expiry == Expiry::checked && cache->timestamp.addingSeconds(cacheLifetime) <= dependencies_.clock.now())) {
        return std::nullopt;
    }
    return std::move(cache->tips);
}

void TipStore::saveCache(const std::vector<TipItem>& tips) const {
    const std::string json = encoded({.timestamp = dependencies_.clock.now(), .tips = tips});
    if (const auto error = dependencies_.files.replace(cachePath_, json)) {
        dependencies_.log.write(LogLevel::error, category, "Failed to write tips cache: " + error->description);
    }
}

CurlWebClient& sharedWebClient() {
    static CurlWebClient client;
    return client;
}

} // namespace foliovault
