#include "Host/Commands/LinkSchemes.h"

#include "Platform/Foundation/AsciiSet.h"
#include "Platform/Foundation/URLSyntax.h"
#include "Platform/Views/Node.h"

#include <algorithm>
#include <variant>

namespace host {
namespace {

/// Longer than any registered scheme. Links come from extensions.
constexpr std::size_t maxSchemeLength = 64;

void addScheme(std::string_view url, std::set<std::string>& schemes) {
    if (std::string scheme = schemeOf(url); !scheme.empty()) {
        schemes.insert(std::move(scheme));
    }
}

void collect(const platform::View& view, std::set<std::string>& schemes) {
    std::visit(
        [&](const auto& content) {
            if constexpr (requires { content.url; }) {
                addScheme(content.url, schemes);
            }
            if constexpr (requires { content.child; }) {
                collect(content.child, schemes);
            } else if constexpr (requires { content.children; }) {
                for (const platform::View& child : content.children) {
                    collect(child, schemes);
                }
            }
        },
        view.node().content);
}

} // namespace

std::string schemeOf(std::string_view url) {
    std::string scheme(url.substr(0, std::min(url.find(':'), url.size())));
    if (scheme.size() == url.size() || scheme.size() >= maxSchemeLength || !platform::isURLScheme(scheme)) {
        return {};
    }
    std::transform(scheme.begin(), scheme.end(), scheme.begin(), platform::asciiLowerCased);
    return scheme;
}

void collectSchemes(const Entry& entry, std::set<std::string>& schemes) {
    collect(entry.view, schemes);
    if (entry.widgetURL) {
        addScheme(*entry.widgetURL, schemes);
    }
}

} // namespace host
