// The host's end of the protocol: an extension's process, what it is asked, and how long it may take to answer.
//
// Everything happens on GLib's main loop, in the default main context; nothing waits. Requests may be under way
// together, and responses come in any order. What an extension may do is bounded: a response has at most `maxResponse`
// bytes, at most `maxUnsolicited` lines may come that were not asked for, and no time may be longer than `Timeouts`
// says. An extension that breaks a bound, or speaks nonsense, is killed. One thread.
#pragma once

#include "Host/Connection/EventSource.h"
#include "Host/Connection/ExtensionProcess.h"
#include "Host/Connection/Timeouts.h"
#include "Platform/Foundation/Failure.h"

#include <simdjson.h>

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>

namespace host {

class ExtensionClient {
  public:
    static constexpr std::size_t maxResponse = std::size_t{8} << 20U;
    static constexpr int maxUnsolicited = 1000;

    /// Starts the extension; `home` as in `makeExtensionEnvironment`.
    static platform::Outcome<std::unique_ptr<ExtensionClient>> start(const Manifest& manifest,
                                                                     const std::optional<std::filesystem::path>& home,
                                                                     Confined confined, const Timeouts& timeouts = {});
    ExtensionClient(const ExtensionClient&) = delete;
    ExtensionClient& operator=(const ExtensionClient&) = delete;
    ~ExtensionClient() = default;

    /// A response's result, a JSON object that is valid during the call; or a failure: `usage` if the extension refused
    /// this request, `unavailable` if it is gone, or was killed.
    using Result = platform::Outcome<simdjson::dom::element>;
    using Responded = std::function<void(const Result& result)>;
    /// Sends a request; `params` is a JSON object. `responded` is called once, unless this is destroyed before; before
    /// this returns if the extension is gone already. It may send requests, but must not destroy this.
    void send(std::string_view method, std::string_view params, Responded responded);

    /// Sends the requests that `other` has not responded to, whose responses do not count any more; but each is sent
    /// twice at most, so that it is answered in the end.
    void takeRequests(ExtensionClient& other);

    /// Ends the extension's input, so that it exits when it has responded to everything.
    void shutDown();

    /// From now on in place of the timeout it was started with.
    void setResponseTimeout(std::chrono::milliseconds timeout);

    /// Called once the process has ended, from the main loop; this may be destroyed afterwards, but not by the call.
    void onEnd(std::function<void()> ended) { ended_ = std::move(ended); }

    /// Whether the next request should go to another process: this one is shutting down, or gone.
    bool isShuttingDown() const { return isShuttingDown_ || error_; }
    /// Whether the process is gone, so that destroying this waits for nothing.
    bool hasEnded() const { return process_.isReaped(); }
    /// Whether it should be started anew: see `Sandbox::needsRestart`.
    bool needsRestart() const { return process_.needsRestart(); }
    const Manifest& manifest() const { return manifest_; }

  private:
    struct Request {
        std::string method;
        std::string params;
        Responded responded;
        bool wasTaken = false;
    };

    ExtensionClient(const Manifest& manifest, ExtensionProcess process, const Timeouts& timeouts);
    void dispatch();
    void send(Request request);
    void write();
    void readStderr();
    void readResponses();
    void handleLine(std::string_view line);
    void close(platform::FileDescriptor& stream);
    std::optional<std::chrono::milliseconds> timeout() const;
    std::optional<SteadyTime> deadline() const;
    void onTimeout();
    void fail(std::string_view why);
    void updateSource();

    /// Whether the extension has closed its output, as it does when it exits.
    bool isClosed() const { return !process_.output.isOpen(); }

    Manifest manifest_;
    ExtensionProcess process_;
    Timeouts timeouts_;
    SteadyTime lastActivity_;
    std::function<void()> ended_;
    bool isShuttingDown_ = false;
    std::int64_t lastId_ = 0;
    std::map<std::int64_t, Request> requests_;
    int unsolicitedCount_ = 0;
    std::string outgoing_;
    std::string incoming_;
    std::string stderrTail_;
    std::size_t stderrSize_ = 0;
    /// Why no more responses will come; the process has ended then, or is killed.
    std::optional<platform::Failure> error_;
    simdjson::dom::parser parser_;
    EventSource source_;
};

} // namespace host
