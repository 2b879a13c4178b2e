#include "Host/Session/AddCommand.h"

#include "Host/Arrangement/ArrangementJson.h"
#include "Host/Connection/DeclaredChoices.h"
#include "Host/Session/ExitCode.h"
#include "Host/Session/HostApplication.h"

#include <memory>
#include <utility>

namespace host {
namespace {

using platform::Expected;
using platform::Unexpected;

struct Unref {
    void operator()(GApplicationCommandLine* line) const { g_object_unref(line); }
};

/// The caller waits until this ends.
class Request : public std::enable_shared_from_this<Request> {
  public:
    Request(HostApplication& host, GApplicationCommandLine* line, Instance instance, std::optional<std::string> family,
            std::vector<std::string> extensions)
        : host_(host), line_(G_APPLICATION_COMMAND_LINE(g_object_ref(line))), instance_(std::move(instance)),
          family_(std::move(family)), extensions_(std::move(extensions)) {}

    void askNext() {
        instance_.extension = extensions_.at(next_++);
        host_.ask(instance_.extension, "describe", "{}",
                  [self = shared_from_this()](const Expected<std::string, std::string>& answer) {
                      self->described(answer ? readDescription(*answer) : Unexpected{answer.error()});
                  });
    }

  private:
    void described(const Message<std::vector<WidgetInfo>>& widgets) {
        if (!widgets) {
            return fail(ExitCode::unavailable, widgets.error());
        }
        if (extensions_.size() > 1 && !declaredWidget(*widgets, instance_.kind)) {
            return next_ < extensions_.size() ? askNext() : fail(ExitCode::usage, unknownWidget(instance_.kind));
        }
        auto instance = declaredInstance(instance_, family_, *widgets);
        if (!instance) {
            return fail(ExitCode::usage, instance.error());
        }
        host_.change(Addition{*std::move(instance)},
                     [self = shared_from_this()](const HostApplication::Change& result) { self->changed(result); });
    }

    void changed(const HostApplication::Change& result) {
        if (!result) {
            return fail(exitCodeOf(result.error().kind), result.error().message);
        }
        if (result->notice) {
            g_application_command_line_printerr(line_.get(), "widgethost: %s\n", result->notice->c_str());
        }
        g_application_command_line_print(line_.get(), "%u\n", result->arrangement.instances.back().id);
        g_application_command_line_set_exit_status(line_.get(), static_cast<int>(ExitCode::success));
    }

    void fail(ExitCode code, const std::string& message) {
        g_application_command_line_printerr(line_.get(), "widgethost: %s\n", message.c_str());
        g_application_command_line_set_exit_status(line_.get(), static_cast<int>(code));
    }

    HostApplication& host_;
    std::unique_ptr<GApplicationCommandLine, Unref> line_;
    Instance instance_;
    std::optional<std::string> family_;
    std::vector<std::string> extensions_;
    std::size_t next_ = 0;
};

} // namespace

Message<Instance> declaredInstance(Instance instance, const std::optional<std::string>& family,
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
        g_application_command_line_printerr(line, "widgethost: this is no widget to add\n");
        return static_cast<int>(ExitCode::usage);
    }
    const auto family = words[1].empty() ? std::nullopt : std::optional(words[1]);
    std::make_shared<Request>(host, line, arrangement->instances.front(), family,
                              std::vector<std::string>(words.begin() + 2, words.end()))
        ->askNext();
    // A host that ends before it is done has added nothing that anybody knows of.
    return static_cast<int>(ExitCode::unavailable);
}

} // namespace host
