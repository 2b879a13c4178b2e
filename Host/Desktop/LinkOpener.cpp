#include "Host/Desktop/LinkOpener.h"

#include "Host/Desktop/Objects.h"

namespace host {

bool openLink(const std::string& url) {
    const std::unique_ptr<char, FreeMemory> scheme(g_uri_parse_scheme(url.c_str()));
    const ObjectHandle<GAppInfo> application(scheme ? g_app_info_get_default_for_uri_scheme(scheme.get()) : nullptr);
    if (!application) {
        return false;
    }
    const ObjectHandle<GdkAppLaunchContext> context(gdk_display_get_app_launch_context(gdk_display_get_default()));
    GList* urls = g_list_append(nullptr, const_cast<char*>(url.c_str()));
    const gboolean started =
        g_app_info_launch_uris(application.get(), urls, G_APP_LAUNCH_CONTEXT(context.get()), nullptr);
    g_list_free(urls);
    return started != FALSE;
}

} // namespace host
