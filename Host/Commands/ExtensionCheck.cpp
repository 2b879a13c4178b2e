#include "Host/Commands/ExtensionCheck.h"

#include "Host/Commands/LinkSchemes.h"
#include "Host/Connection/ExtensionChannel.h"
#include "Host/Connection/ExtensionConnection.h"
#include "Host/Connection/Messages.h"
#include "Host/Connection/Requests.h"

#include <fmt/format.h>

#include <algorithm>
#include <map>
#include <string_view>

namespace host {
namespace {

using SteadyClock = std::chrono::steady_clock;

int milliseconds(SteadyClock::duration duration) {
    return static_cast<int>(std::chrono::ceil<std::chrono::milliseconds>(duration).count());
}

/// The largest shows the most links.
std::string largestFamily(const WidgetInfo& widget) {
    for (const std::string_view family : {"extraLarge", "large", "medium"}) {
        if (std::find(widget.families.begin(), widget.families.end(), family) != widget.families.end()) {
            return std::string(family);
        }
    }
    return widget.families.empty() ? "medium" : widget.families.front();
}

/// One extension, asked everything.
class Examination {
  public:
    Examination(const Manifest& manifest, const ExtensionTrial& trial)
        : identifier_(manifest.identifier), start_(SteadyClock::now()),
          channel_(ExtensionChannel::open(manifest, trial.home, trial.confined)) {
        if (channel_) {
            channel_->send("describe", "{}");
        }
    }

    bool isDone() const { return !channel_ || channel_->lost() || channel_->unansweredCount() == 0; }

    ExtensionChannel::Descriptors awaited() const { return channel_->awaited(); }

    void exchange(const ExtensionChannel::Descriptors& ready, std::set<std::string>& schemes) {
        channel_->exchange(ready);
        while (auto answer = channel_->nextAnswer()) {
            take(*std::move(answer), schemes);
        }
    }

    /// What there is to say when it is done, or the patience is over.
    Finding finding(SteadyClock::duration patience) const {
        if (!channel_) {
            return problem(channel_.error(), "mend what is named; the manifest says where the program lies");
        }
        if (channel_->lost()) {
            return problem(*channel_->lost(), "install it anew; see whether it does better with --unconfined");
        }
        if (!fault_.empty()) {
            return problem(fault_, "install the extension and the host of the same version");
        }
        const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(patience).count();
        if (!described_) {
            return problem(fmt::format("started, but gave no answer in {} s", seconds),
                           "install it anew; see whether it does better with --unconfined");
        }
        std::string what = fmt::format("{}: starts and answers in {} ms, {} widget{}", identifier_,
                                       milliseconds(*described_), widgetCount_, widgetCount_ == 1 ? "" : "s");
        if (!asked_.empty()) {
            return Finding::note("extension",
                                 fmt::format("{}; nothing in {} s from {}", what, seconds, asked_.begin()->second),
                                 "see whether the network is slow; the extension's log says what it waits for");
        }
        return Finding::ok("extension", std::move(what));
    }

  private:
    Finding problem(std::string_view what, std::string advice) const {
        return Finding::problem("extension", fmt::format("{}: {}", identifier_, what), std::move(advice));
    }

    void take(ExtensionChannel::Answer answer, std::set<std::string>& schemes) {
        const auto kind = asked_.extract(answer.id);
        const auto line = answerWithResult(std::move(answer.line));
        if (!line) {
            fault_ = kind ? fmt::format("{}: {}", kind.mapped(), line.error().message) : line.error().message;
        } else if (kind) {
            takeEntries(*line, kind.mapped(), schemes);
        } else {
            takeDescription(*line);
        }
    }

    void takeDescription(const std::string& line) {
        described_ = SteadyClock::now() - start_;
        const auto widgets = readDescription(line);
        if (!widgets) {
            fault_ = widgets.error();
            return;
        }
        widgetCount_ = widgets->size();
        using Method = EntryRequest::Method;
        for (const WidgetInfo& widget : *widgets) {
            for (const Method method : {Method::placeholder, Method::timeline}) {
                const EntryRequest request{.method = method, .kind = widget.kind, .family = largestFamily(widget)};
                asked_.emplace(channel_->send(methodName(method), paramsOf(request)), widget.kind);
            }
        }
    }

    void takeEntries(const std::string& line, const std::string& kind, std::set<std::string>& schemes) {
        const auto entries = readEntries(line);
        if (!entries) {
            fault_ = fmt::format("{}: {}", kind, entries.error());
            return;
        }
        for (const Entry& entry : *entries) {
            collectSchemes(entry, schemes);
        }
    }

    std::string identifier_;
    SteadyClock::time_point start_;
    platform::Expected<ExtensionChannel, std::string> channel_;
    std::optional<SteadyClock::duration> described_;
    std::size_t widgetCount_ = 0;
    /// The widgets' kinds by the requests that have no answer yet.
    std::map<std::int64_t, std::string> asked_;
    /// What was wrong with an answer, the last time.
    std::string fault_;
};

} // namespace

ExtensionFindings checkExtensions(const std::vector<Manifest>& manifests, const ExtensionTrial& trial) {
    const auto deadline = SteadyClock::now() + trial.patience;
    std::vector<Examination> examinations;
    examinations.reserve(manifests.size());
    for (const Manifest& manifest : manifests) {
        examinations.emplace_back(manifest, trial);
    }
    ExtensionFindings found;
    for (;;) {
        std::vector<Examination*> awaited;
        std::vector<pollfd> descriptors;
        for (Examination& examination : examinations) {
            if (!examination.isDone()) {
                const auto its = examination.awaited();
                awaited.push_back(&examination);
                descriptors.insert(descriptors.end(), its.begin(), its.end());
            }
        }
        const auto left = deadline - SteadyClock::now();
        if (awaited.empty() || left <= SteadyClock::duration::zero()) {
            break;
        }
        if (poll(descriptors.data(), descriptors.size(), milliseconds(left)) <= 0) {
            continue;
        }
        auto ready = descriptors.begin();
        for (Examination* examination : awaited) {
            ExtensionChannel::Descriptors its{};
            std::copy_n(ready, its.size(), its.begin());
            ready += its.size();
            examination->exchange(its, found.schemes);
        }
    }
    for (const Examination& examination : examinations) {
        found.findings.push_back(examination.finding(trial.patience));
    }
    return found;
}

} // namespace host
