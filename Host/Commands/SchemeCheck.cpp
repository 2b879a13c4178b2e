#include "Host/Commands/SchemeCheck.h"

#include <fmt/format.h>
#include <gio/gio.h>

#include <memory>

namespace host {
namespace {

constexpr std::size_t maxSchemes = 16;

struct Unref {
    void operator()(gpointer object) const { g_object_unref(object); }
};

Finding checkScheme(const std::string& scheme) {
    const std::unique_ptr<GAppInfo, Unref> handler(g_app_info_get_default_for_uri_scheme(scheme.c_str()));
    if (handler) {
        return Finding::ok("links", fmt::format("{}: opens {}", scheme, g_app_info_get_display_name(handler.get())));
    }
    return Finding::problem("links", scheme + ": no application opens it",
                            "install the application, or choose one: xdg-mime default NAME.desktop x-scheme-handler/" +
                                scheme);
}

} // namespace

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
