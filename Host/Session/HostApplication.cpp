#include "Host/Session/HostApplication.h"

#include "Host/Connection/Landlock.h"
#include "Host/Session/AddCommand.h"
#include "Host/Session/Explanation.h"
#include "Host/Session/RunningHost.h"
#include "Platform/Foundation/Releaser.h"

#include <fmt/format.h>
#include <glib-unix.h>

#include <charconv>
#include <csignal>
#include <cstdio>
#include <sys/stat.h>

namespace host {

namespace {

constexpr int usage = static_cast<int>(platform::Failure::Kind::usage);
constexpr int unavailable = static_cast<int>(platform::Failure::Kind::unavailable);

/// How long `run` waits at the end for changes that are still to be written.
constexpr std::chrono::seconds finishTimeout{5};

void logWarning(const std::string& message) {
    fmt::print(stderr, "widgethost: {}\n", message);
    std::fflush(stderr);
}

} // namespace

HostApplication::HostApplication(const Options& options)
    : folder_(options.arrangementFolder), file_(platform::DiskFileSystem::shared(), folder_), display_(options.display),
      presence_(options.presence), session_({.findManifest = options.findManifest,
                                             .startExtension = options.startExtension,
                                             .clock = platform::SystemClock::shared(),
                                             .observer = options.display,
                                             .home = options.home,
                                             .warn = logWarning}),
      application_(g_application_new(busName, G_APPLICATION_HANDLES_COMMAND_LINE)) {
    const auto startUp = +[](HostApplication* self) { self->start(); };
    const auto commandLine =
        +[](HostApplication* self, GApplicationCommandLine* line) -> int { return self->answer(line); };
    g_signal_connect_swapped(application_, "startup", G_CALLBACK(startUp), this);
    g_signal_connect_swapped(application_, "command-line", G_CALLBACK(commandLine), this);
}

HostApplication::~HostApplication() {
    g_clear_object(&folderMonitor_);
    g_clear_object(&zoneMonitor_);
    g_object_unref(application_);
}

int HostApplication::run() {
    std::string program = "widgethost";
    std::string command = presence_ == Presence::foreground ? "host" : "background";
    std::array<char*, 3> words{program.data(), command.data(), nullptr};
    const int code = g_application_run(application_, 2, words.data());
    if (lock_) {
        display_.shutDown();
        work_.finish(finishTimeout);
    }
    return exitCode_ != 0 ? exitCode_ : code;
}

void HostApplication::end() {
    g_application_quit(application_);
}

void HostApplication::start() {
    auto lock = FileLock::tryLock(folder_ / "host.lock");
    if (!lock) {
        logWarning(lock.error().kind == platform::Failure::Kind::unavailable
                       ? "another host is running on this arrangement"
                       : lock.error().message);
        exitCode_ = unavailable;
        g_application_quit(application_);
        return;
    }
    lock_.emplace(*std::move(lock));
    if (GDBusConnection* bus = g_application_get_dbus_connection(application_); bus != nullptr) {
        // The bus closes when the login session ends. GLib's default would be to kill this process.
        g_dbus_connection_set_exit_on_close(bus, FALSE);
        g_signal_connect_swapped(bus, "closed", G_CALLBACK(&g_application_quit), application_);
    } else {
        logWarning("there is no session bus: commands reach this host only by the arrangement file");
    }
    if (landlockVersion() == 0) {
        logWarning("this kernel has no Landlock: extensions can read more than they should");
    }
    g_application_hold(application_);
    for (const int signal : {SIGTERM, SIGINT}) {
        g_unix_signal_add_full(
            G_PRIORITY_DEFAULT, signal,
            [](gpointer self) -> gboolean {
                static_cast<HostApplication*>(self)->end();
                return G_SOURCE_CONTINUE;
            },
            this, nullptr);
    }
    display_.started(*this);
    // The arrangement's folder, since the file is replaced by a rename.
    folderMonitor_ = monitor(folder_.c_str(), G_CALLBACK(+[](HostApplication* self) { self->sync(); }));
    // Dates of entries may depend on midnight.
    zoneMonitor_ = monitor("/etc/localtime", G_CALLBACK(+[](HostApplication* self) {
                               self->session_.reload(std::nullopt, [](const auto& /*failures*/) {});
                           }));
    sync();
}

GFileMonitor* HostApplication::monitor(const char* path, GCallback changed) {
    const std::unique_ptr<GFile, platform::Releaser<g_object_unref>> file(g_file_new_for_path(path));
    GFileMonitor* monitor = g_file_monitor(file.get(), G_FILE_MONITOR_WATCH_MOVES, nullptr, nullptr);
    if (monitor != nullptr) {
        g_signal_connect_swapped(monitor, "changed", changed, this);
    }
    return monitor;
}

HostApplication::Stamp HostApplication::stampOf(const std::filesystem::path& file) {
    struct stat status {};
    if (stat(file.c_str(), &status) != 0) {
        return {};
    }
    return {static_cast<std::int64_t>(status.st_dev), static_cast<std::int64_t>(status.st_ino), status.st_size,
            status.st_ctim.tv_sec, status.st_ctim.tv_nsec};
}

void HostApplication::sync() {
    // Each change causes several events, and perhaps a command.
    const Stamp stamp = stampOf(file_.path());
    if (std::exchange(stamp_, stamp) == stamp) {
        return;
    }
    auto arrangement = file_.load();
    if (!arrangement) {
        // The tiles stay until the arrangement can be read.
        if (lastError_ != arrangement.error().message) {
            lastError_ = arrangement.error().message;
            logWarning(lastError_);
        }
        return;
    }
    lastError_.clear();
    if (std::exchange(isLoaded_, true) && arrangement_ == *arrangement) {
        return;
    }
    arrangement_ = *std::move(arrangement);
    display_.arrangementChanged(arrangement_);
    session_.setTiles(arrangement_.instances);
    session_.setRenderingMode(arrangement_.renderingMode);
}

void HostApplication::change(ArrangementChange change, std::function<void(const Change& result)> done) {
    struct Writing {
        ArrangementFile file;
        ArrangementChange change;
        std::optional<Change> result;
    };
    auto writing = std::make_shared<Writing>(Writing{file_, std::move(change), std::nullopt});
    work_.add({.prepare =
                   [this, writing] {
                       // Not earlier, since the changes before may move tiles.
                       auto* addition = std::get_if<Addition>(&writing->change);
                       if (addition != nullptr && !addition->instance.position) {
                           display_.findPlace(addition->instance);
                       }
                   },
               .work = [writing] { writing->result = writing->file.update(writing->change); },
               .done =
                   [this, writing, done = std::move(done)] {
                       const Change& result = *writing->result;
                       if (result) {
                           if (result->notice) {
                               logWarning(*result->notice);
                           }
                           sync();
                       }
                       done(result);
                   }});
}

void HostApplication::workLater(std::function<void()> work) {
    work_.add({.prepare = nullptr, .work = std::move(work), .done = nullptr});
}

void HostApplication::request(const std::string& extension, std::string_view method, std::string_view params,
                              ExtensionClient::Responded responded) {
    session_.request(extension, method, params, std::move(responded));
}

void HostApplication::requestEntries(const std::string& extension, const EntryRequest& request,
                                     std::function<void(const platform::Outcome<std::vector<Entry>>& entries)> done) {
    session_.request(extension, methodName(request.method), paramsOf(request),
                     [done = std::move(done)](const ExtensionClient::Result& result) {
                         done(result ? readEntries(*result) : platform::Unexpected{result.error()});
                     });
}

int HostApplication::answer(GApplicationCommandLine* line) {
    if (exitCode_ != 0) {
        return exitCode_;
    }
    if (g_application_command_line_get_is_remote(line) == FALSE) {
        return 0;
    }
    int count = 0;
    char** arguments = g_application_command_line_get_arguments(line, &count);
    const std::vector<std::string> words(arguments, arguments + count);
    g_strfreev(arguments);
    const std::string command = words.size() > 1 ? words[1] : "";
    const auto argument = words.size() > 2 ? std::optional(words[2]) : std::nullopt;
    if (command == "host") {
        if (!display_.activate()) {
            g_application_command_line_print(line, "A host is already running.\n");
        }
        return 0;
    }
    if (command == "background") {
        return 0;
    }
    if (command == "sync") {
        sync();
        return 0;
    }
    if (command == "reload") {
        return reload(line, argument);
    }
    if (command == "add") {
        return answerAdd(*this, line, {words.begin() + 2, words.end()});
    }
    if (command == "explain" && argument) {
        return explain(line, *argument);
    }
    g_application_command_line_printerr(line, "widgethost: the running host does not know \"%s\"\n", command.c_str());
    return usage;
}

int HostApplication::reload(GApplicationCommandLine* line, const std::optional<std::string>& kind) {
    // The calling process waits until the last reference is gone.
    g_object_ref(line);
    session_.reload(kind, [line](const std::vector<std::string>& failures) {
        for (const std::string& failure : failures) {
            g_application_command_line_printerr(line, "widgethost: %s\n", failure.c_str());
        }
        g_application_command_line_set_exit_status(line, failures.empty() ? 0 : unavailable);
        g_object_unref(line);
    });
    // Already set if there are no tiles of that kind.
    return g_application_command_line_get_exit_status(line);
}

int HostApplication::explain(GApplicationCommandLine* line, const std::string& id) {
    InstanceId number = 0;
    std::from_chars(id.data(), id.data() + id.size(), number);
    const auto instance = instanceWith(number, arrangement_);
    if (!instance) {
        g_application_command_line_printerr(line, "widgethost: %s\n", instance.error().message.c_str());
        return usage;
    }
    const std::string text = explanation(*session_.tile(number), platform::SystemClock::shared().now());
    g_application_command_line_print(line, "%s", text.c_str());
    return 0;
}

} // namespace host
