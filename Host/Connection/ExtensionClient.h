// The host's end of the protocol: an extension's process, its requests and their timeouts.
//
// Runs on GLib's main loop, in the default main context, and never blocks. Several requests may be pending; responses
// come in any order. An extension is killed if it sends a response of more than `maxResponse` bytes, more than
// `maxUnsolicited` lines without a request, or an invalid message, or exceeds one of the `Timeouts`. One thread.
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
    /// the request, `unavailable` if it has ended or was killed.
    using Result = platform::Outcome<simdjson::dom::element>;
    using Responded = std::function<void(const Result& result)>;
    /// Sends a request. Requires a JSON object as `params`. `responded` is called once, unless this is destroyed first;
    /// if the extension has ended, before `send` returns. It may send requests, but must not destroy this.
    void send(std::string_view method, std::string_view params, Responded responded);

    /// Takes over the requests that `other` has not responded to. A request that was taken before stays with `other`,
    /// so that it is sent twice at most.
    void takeRequests(ExtensionClient& other);

    /// Closes the extension's input, so that it exits after its last response.
    void shutDown();

    /// Replaces `Timeouts::response`.
    void setResponseTimeout(std::chrono::milliseconds timeout);

    /// Sets a function that is called from the main loop once the process has ended. It must not destroy this.
    void onEnd(std::function<void()> ended) { ended_ = std::move(ended); }

    /// Whether this accepts no new requests: it is shutting down, or has failed.
    bool isShuttingDown() const { return isShuttingDown_ || error_; }
    /// Whether the process has ended, so that destroying this does not block.
    bool hasEnded() const { return process_.isReaped(); }
    /// As `Sandbox::needsRestart`.
    bool needsRestart() const { return process_.needsRestart(); }
    const Manifest& manifest() const { return manifest_; }

  private:
    struct Request {
        std::string method;
        std::string params;
        Responded responded;
        bool wasTaken = false;
    };

    ExtensionClient(Manifest manifest, ExtensionProcess process, const Timeouts& timeouts);
    void dispatch();
    void send(Request request);
    void write();
    void readStderr();
    void readResponses();
    void handleLine(std::string_view line);
    void close(platform::FileDescriptor& stream);
    std::optional<SteadyTime> deadline() const;
    void onTimeout();
    void fail(std::string_view why);
    void updateSource();

    /// Whether the extension has closed its output, as at its exit.
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
    /// Set if no more responses will come: the process has ended or was killed.
    std::optional<platform::Failure> error_;
    simdjson::dom::parser parser_;
    EventSource source_;
};

} // namespace host
