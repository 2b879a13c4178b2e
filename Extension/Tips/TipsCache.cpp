#include "Extension/Tips/TipsCache.h"

#include "Platform/Foundation/JsonTree.h"
#include "Platform/Foundation/JsonWriter.h"

#include <utility>

namespace foliovault {
namespace {

using platform::Date;
using Json = nlohmann::json;

/// Returns the member of that name; null if it is missing.
const Json* memberOf(const Json& object, const char* name) {
    const auto member = object.find(name);
    return member == object.end() ? nullptr : &*member;
}

std::optional<std::string> textOf(const Json& object, const char* name) {
    const Json* value = memberOf(object, name);
    return value != nullptr && value->is_string() ? std::optional(value->get<std::string>()) : std::nullopt;
}

std::optional<Date> dateOf(const Json& object, const char* name) {
    const Json* value = memberOf(object, name);
    return value != nullptr && value->is_number() ? std::optional(Date{value->get<double>()}) : std::nullopt;
}

std::optional<TipItem> tipOf(const Json& object) {
    if (!object.is_object()) {
        return std::nullopt;
    }
    auto title = textOf(object, "title");
    auto description = textOf(object, "description");
    auto link = textOf(object, "link");
    const auto pubDate = dateOf(object, "pubDate");
    auto guid = textOf(object, "guid");
    if (!title || !description || !link || !pubDate || !guid) {
        return std::nullopt;
    }
    return TipItem{.title = *std::move(title),
                   .description = *std::move(description),
                   .link = *std::move(link),
                   .pubDate = *pubDate,
                   .guid = *std::move(guid)};
}

} // namespace

std::string encoded(const CachedTips& cache) {
    std::string json;
    platform::JsonWriter out(json);
    out.beginObject().key("timestamp").number(cache.timestamp.secondsSinceReferenceDate).key("tips").beginArray();
    for (const TipItem& tip : cache.tips) {
        out.beginObject()
            .member("title", tip.title)
            .member("description", tip.description)
            .member("link", tip.link)
            .key("pubDate")
            .number(tip.pubDate.secondsSinceReferenceDate)
            .member("guid", tip.guid)
            .endObject();
    }
    out.endArray().endObject();
    return json;
}

std::optional<CachedTips> decodedCache(std::string_view json) {
    const Json root = platform::parsedJson(json);
    if (!root.is_object()) {
        return std::nullopt;
    }
    const auto timestamp = dateOf(root, "timestamp");
    const Json* tips = memberOf(root, "tips");
    if (!timestamp || tips == nullptr || !tips->is_array()) {
        return std::nullopt;
    }
    CachedTips cache{.timestamp = *timestamp, .tips = {}};
    cache.tips.reserve(tips->size());
    for (const Json& object : *tips) {
        auto tip = tipOf(object);
        if (!tip) {
            return std::nullopt;
        }
        cache.tips.push_back(*std::move(tip));
    }
    return cache;
}

} // namespace foliovault
