#include "Host/Commands/ExtensionCheck.h"

#include "Host/Commands/SchemeCheck.h"

#include <fmt/format.h>

#include <algorithm>
#include <deque>
#include <functional>
#include <memory>
#include <string_view>

namespace host {
namespace {

using SteadyClock = std::chrono::steady_clock;

int milliseconds(SteadyClock::duration duration) {
    return static_cast<int>(std::chrono::ceil<std::chrono::milliseconds>(duration).count());
}

/// Returns the family that shows the largest number of links.
std::string largestFamily(const WidgetInfo& widget) {
    for (const std::string_view family : {"extraLarge", "large", "medium"}) {
        if (std::find(widget.families.begin(), widget.families.end(), family) != widget.families.end()) {
            return std::string(family);
        }
    }
    return widget.families.empty() ? "medium" : widget.families.front();
}

/// Sends all requests to one extension.
class ExtensionProbe {
  public:
    ExtensionProbe(const Manifest& manifest, const ExtensionChoice& choice, std::set<std::string>& schemes)
        : identifier_(manifest.identifier), schemes_(schemes), start_(SteadyClock::now()),
          client_(ExtensionClient::start(manifest, choice.home, choice.confined, {.idle = std::nullopt})) {
        if (client_) {
            send("describe", "{}", "", [this](Json result) { return takeDescription(result); });
        }
    }
    ExtensionProbe(const ExtensionProbe&) = delete;
    ExtensionProbe& operator=(const ExtensionProbe&) = delete;
    ~ExtensionProbe() = default;

    bool isDone() const { return !client_ || pending_.empty(); }

    /// Requires that it is done, or that the timeout is over.
    Finding finding(std::chrono::seconds timeout) const {
        const std::string again = "reinstall it, or try --unconfined";
        if (!client_) {
            return problem(client_.error().message, "correct the manifest, which names the program");
        }
        if (gone_) {
            return problem(*gone_, again);
        }
        if (!fault_.empty()) {
            return problem(fault_, "install the same version of extension and host");
        }
        if (!described_) {
            return problem(fmt::format("started, but gave no answer in {} s", timeout.count()), again);
        }
        std::string what = fmt::format("{}: starts and answers in {} ms, {} widget{}", identifier_,
                                       milliseconds(*described_), widgetCount_, widgetCount_ == 1 ? "" : "s");
        if (!pending_.empty()) {
            return Finding::note("extension",
                                 fmt::format("{}; nothing in {} s from {}", what, timeout.count(), *pending_.begin()),
                                 "check the network; the extension's log says what it waits for");
        }
        return Finding::ok("extension", std::move(what));
    }

  private:
    Finding problem(std::string_view what, std::string advice) const {
        return Finding::problem("extension", fmt::format("{}: {}", identifier_, what), std::move(advice));
    }

    /// `take` returns what is wrong with the result.
    void send(std::string_view method, std::string_view params, const std::string& kind,
              std::function<std::optional<platform::Failure>(Json result)> take) {
        const auto request = pending_.insert(kind);
        (*client_)->send(method, params,
                         [this, request, take = std::move(take)](const ExtensionClient::Result& result) {
                             const std::string name = std::move(pending_.extract(request).value());
                             if (!result && result.error().kind == platform::Failure::Kind::unavailable) {
                                 gone_ = result.error().message;
                             } else if (const auto fault = result ? take(*result) : result.error()) {
                                 fault_ = name.empty() ? fault->message : fmt::format("{}: {}", name, fault->message);
                             }
                         });
    }

    std::optional<platform::Failure> takeDescription(Json result) {
        described_ = SteadyClock::now() - start_;
        const auto widgets = readDescription(result);
        if (!widgets) {
            return widgets.error();
        }
        widgetCount_ = widgets->size();
        using Method = EntryRequest::Method;
        for (const WidgetInfo& widget : *widgets) {
            for (const Method method : {Method::placeholder, Method::timeline}) {
                const EntryRequest request{.method = method, .kind = widget.kind, .family = largestFamily(widget)};
                send(methodName(method), paramsOf(request), widget.kind,
                     [this](Json entries) { return takeEntries(entries); });
            }
        }
        return std::nullopt;
    }

    std::optional<platform::Failure> takeEntries(Json result) {
        const auto entries = readEntries(result);
        if (!entries) {
            return entries.error();
        }
        for (const Entry& entry : *entries) {
            collectSchemes(entry, schemes_);
        }
        return std::nullopt;
    }

    std::string identifier_;
    std::set<std::string>& schemes_;
    SteadyClock::time_point start_;
    platform::Outcome<std::unique_ptr<ExtensionClient>> client_;
    std::optional<SteadyClock::duration> described_;
    std::size_t widgetCount_ = 0;
    /// Kinds of the widgets, one for each request without a response.
    std::multiset<std::string> pending_;
    std::optional<std::string> gone_;
    /// What was wrong with the last bad response.
    std::string fault_;
};

} // namespace

ExtensionFindings checkExtensions(const std::vector<Manifest>& manifests, const ExtensionChoice& choice,
                                  std::chrono::seconds timeout) {
    ExtensionFindings found;
    std::deque<ExtensionProbe> probes;
    for (const Manifest& manifest : manifests) {
        probes.emplace_back(manifest, choice, found.schemes);
    }
    const auto deadline = SteadyClock::now() + timeout;
    // Only ends the wait.
    EventSource timer([&timer] { timer.setDeadline(std::nullopt); });
    timer.setDeadline(deadline);
    const auto isDone = [](const ExtensionProbe& probe) { return probe.isDone(); };
    while (SteadyClock::now() < deadline && !std::all_of(probes.begin(), probes.end(), isDone)) {
        g_main_context_iteration(nullptr, TRUE);
    }
    for (const ExtensionProbe& probe : probes) {
        found.findings.push_back(probe.finding(timeout));
    }
    return found;
}

} // namespace host
