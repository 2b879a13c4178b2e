#include "Host/Commands/SchemeCheck.h"

#include "Platform/Foundation/AsciiSet.h"
#include "Platform/Foundation/Releaser.h"
#include "Platform/Foundation/URLSyntax.h"
#include "Platform/Views/Node.h"

#include <fmt/format.h>
#include <gio/gio.h>

#include <algorithm>
#include <memory>
#include <variant>

namespace host {
namespace {

constexpr std::size_t maxSchemes = 16;

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

Finding checkScheme(const std::string& scheme) {
    const std::unique_ptr<GAppInfo, platform::Releaser<g_object_unref>> handler(
        g_app_info_get_default_for_uri_scheme(scheme.c_str()));
    if (handler) {
        return Finding::ok("links", fmt::format("{}: opens {}", scheme, g_app_info_get_display_name(handler.get())));
    }
    return Finding::problem("links", scheme + ": no application opens it",
                            "install the application, or choose one: xdg-mime default NAME.desktop x-scheme-handler/" +
                                scheme);
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

Findings checkSchemes(const std::set<std::string>& schemes) {
    Findings findings;
    for (const std::string& scheme : schemes) {
        if (findings.size() < maxSchemes) {
            findings.push_back(checkScheme(scheme));
        }
    }
    return findings;
}

} // namespace host
