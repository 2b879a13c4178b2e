#include "Host/Session/AddCommand.h"

#include "Host/Arrangement/ArrangementJson.h"
#include "Host/Connection/DeclaredChoices.h"
#include "Host/Session/HostApplication.h"
#include "Platform/Foundation/Releaser.h"

#include <memory>
#include <utility>

namespace host {
namespace {

using platform::Failure;
using platform::Outcome;
using platform::Unexpected;

class AddRequest : public std::enable_shared_from_this<AddRequest> {
  public:
    AddRequest(HostApplication& host, GApplicationCommandLine* line, Instance instance,
               std::optional<std::string> family)
        : host_(host), line_(G_APPLICATION_COMMAND_LINE(g_object_ref(line))), instance_(std::move(instance)),
          family_(std::move(family)) {}

    /// Sends the requests to all extensions at once, so that a silent one does not delay the others.
    void describe(const std::vector<std::string>& extensions) {
        isOneOfSeveral_ = extensions.size() > 1;
        pending_ = extensions.size();
        for (const std::string& extension : extensions) {
            host_.request(extension, "describe", "{}",
                          [self = shared_from_this(), extension](const ExtensionClient::Result& result) {
                              self->described(extension,
                                              result ? readDescription(*result) : Unexpected{result.error()});
                          });
        }
    }

  private:
    void described(const std::string& extension, const Outcome<std::vector<WidgetInfo>>& widgets) {
        --pending_;
        if (isFound_) {
            return;
        }
        if (!widgets) {
            printError((isOneOfSeveral_ ? extension + ": " : "") + widgets.error().message);
        } else if (isOneOfSeveral_ && !declaredWidget(*widgets, instance_.kind)) {
            lacksWidget_ = true;
        } else {
            isFound_ = true;
            return add(extension, *widgets);
        }
        if (pending_ == 0 && lacksWidget_) {
            fail(unknownWidget(instance_.kind));
        }
    }

    void add(const std::string& extension, const std::vector<WidgetInfo>& widgets) {
        instance_.extension = extension;
        auto instance = declaredInstance(instance_, family_, widgets);
        if (!instance) {
            return fail(instance.error());
        }
        host_.change(Addition{*std::move(instance)},
                     [self = shared_from_this()](const HostApplication::Change& result) { self->changed(result); });
    }

    void changed(const HostApplication::Change& result) {
        if (!result) {
            return fail(result.error());
        }
        if (result->notice) {
            printError(*result->notice);
        }
        g_application_command_line_print(line_.get(), "%u\n", result->arrangement.instances.back().id);
        end(std::nullopt);
    }

    void printError(const std::string& message) {
        g_application_command_line_printerr(line_.get(), "widgethost: %s\n", message.c_str());
    }

    void fail(const Failure& failure) {
        printError(failure.message);
        end(failure);
    }

    void end(const std::optional<Failure>& failure) {
        g_application_command_line_set_exit_status(line_.get(), platform::exitCode(failure));
        line_.reset();
    }

    HostApplication& host_;
    /// The calling process waits until this is released.
    std::unique_ptr<GApplicationCommandLine, platform::Releaser<g_object_unref>> line_;
    Instance instance_;
    std::optional<std::string> family_;
    bool isOneOfSeveral_ = false;
    std::size_t pending_ = 0;
    bool isFound_ = false;
    bool lacksWidget_ = false;
};

} // namespace

Outcome<Instance> declaredInstance(Instance instance, const std::optional<std::string>& family,
                                   const std::vector<WidgetInfo>& widgets) {
    const auto widget = declaredWidget(widgets, instance.kind);
    if (!widget) {
        return Unexpected{widget.error()};
    }
    auto declared = declaredFamily(*widget, family);
    if (!declared) {
        return Unexpected{declared.error()};
    }
    if (const auto wrong = checkSettings(*widget, instance.configuration)) {
        return Unexpected{*wrong};
    }
    instance.family = *std::move(declared);
    return instance;
}

std::vector<std::string> addWords(Instance instance, const std::optional<std::string>& family,
                                  const std::vector<std::string>& extensions) {
    instance.id = 1;
    std::vector<std::string> words{"add", arrangementJson({.instances = {std::move(instance)}, .unknown = {}}),
                                   family.value_or("")};
    words.insert(words.end(), extensions.begin(), extensions.end());
    return words;
}

int answerAdd(HostApplication& host, GApplicationCommandLine* line, const std::vector<std::string>& words) {
    const auto arrangement = words.size() > 2 ? arrangementFromJson(words[0]) : Arrangement();
    if (!arrangement || arrangement->instances.size() != 1) {
        g_application_command_line_printerr(line, "widgethost: this is not a widget\n");
        return static_cast<int>(Failure::Kind::usage);
    }
    const auto family = words[1].empty() ? std::nullopt : std::optional(words[1]);
    std::make_shared<AddRequest>(host, line, arrangement->instances.front(), family)
        ->describe({words.begin() + 2, words.end()});
    // The exit code if the host ends before it is done.
    return static_cast<int>(Failure::Kind::unavailable);
}

} // namespace host
