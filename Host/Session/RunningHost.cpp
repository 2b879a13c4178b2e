#include "Host/Session/RunningHost.h"

#include "Platform/Foundation/Releaser.h"

#include <gio/gio.h>

#include <memory>

namespace host {

using platform::Unexpected;
using Unref = platform::Releaser<g_object_unref>;

platform::Expected<int, NoHost> callRunningHost(const std::vector<std::string>& arguments) {
    const std::unique_ptr<GDBusConnection, Unref> bus(g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr));
    if (!bus) {
        return Unexpected{NoHost::noBus};
    }
    // A bus that goes away meanwhile is an error, not the end of this process.
    g_dbus_connection_set_exit_on_close(bus.get(), FALSE);
    const auto flags = static_cast<GApplicationFlags>(G_APPLICATION_HANDLES_COMMAND_LINE | G_APPLICATION_IS_LAUNCHER);
    const std::unique_ptr<GApplication, Unref> application(g_application_new(busName, flags));
    if (g_application_register(application.get(), nullptr, nullptr) == FALSE ||
        g_application_get_is_remote(application.get()) == FALSE) {
        return Unexpected{NoHost::noneRuns};
    }
    std::vector<std::string> texts{"widgethost"};
    texts.insert(texts.end(), arguments.begin(), arguments.end());
    std::vector<char*> words;
    for (std::string& text : texts) {
        words.push_back(text.data());
    }
    words.push_back(nullptr);
    return g_application_run(application.get(), static_cast<int>(texts.size()), words.data());
}

} // namespace host
