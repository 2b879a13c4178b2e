// Gets tips: from the last download while that is fresh, else from the feed, else from the last download of any age.
//
// The last download is in a cache file (see TipsCache.h), "tips_cache.json" in the process's caches folder. Calls
// during a download share it. If several processes download at once, the last writer's file stays. Reports no errors,
// but logs them with category "TipStore". Any thread.
#pragma once

#include "Extension/Tips/TipItem.h"
#include "Platform/Foundation/Clock.h"
#include "Platform/Foundation/FileSystem.h"
#include "Platform/Foundation/Log.h"
#include "Platform/Foundation/WebClient.h"

#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace foliovault {

class TipStore {
  public:
    /// Six hours.
    static constexpr double cacheLifetime = 21'600;
    /// No download makes a larger cache file.
    static constexpr std::size_t maxCacheSize = std::size_t{64} << 20U;

    /// All must outlive the store.
    struct Dependencies {
        const platform::FileSystem& files;
        const platform::WebClient& web;
        const platform::Clock& clock;
        const platform::Log& log;
        /// The cache file's folder.
        std::string cachesFolder;
        /// The user's languages, most preferred first.
        std::vector<std::string> languages;
        /// The server of the feed.
        std::string feedHost;
    };
    explicit TipStore(Dependencies dependencies);

    /// The store on the web and the process's caches folder.
    static TipStore& shared();

    using Completion = std::function<void(const std::vector<TipItem>& tips)>;

    /// Calls `completion` once with the tips, newest first: before it returns if the cache is fresh, else after a
    /// download on the store's thread. If the server sends no tips, passes none and leaves the cache unchanged.
    void fetchTips(Completion completion);

    /// Returns when all calls of `fetchTips` are completed. Requires that none is made meanwhile. Ends the store's
    /// thread before the process's end unloads the libraries that it uses.
    void finish() { thread_ = {}; }

    /// Returns the feed's language for a user of these languages: "de" if the first is German, else "en".
    static std::string_view feedLanguage(const std::vector<std::string>& languages);

  private:
    enum class Expiry { checked, ignored };

    void serveWaiting();
    std::vector<TipItem> freshOrDownloaded() const;
    std::optional<std::vector<TipItem>> loadCache(Expiry expiry) const;
    void saveCache(const std::vector<TipItem>& tips) const;

    Dependencies dependencies_;
    std::string cachePath_;
    std::mutex mutex_;
    std::vector<Completion> waiting_;
    bool isServing_ = false;
    std::jthread thread_;
};

/// Returns the client of the shared store.
platform::CurlWebClient& sharedWebClient();

} // namespace foliovault
