// Runs jobs that may wait for a disk or another process one after the other, on a thread beside the main loop.
//
// There is a thread only while there is work. Called on the main thread.
#pragma once

#include <chrono>
#include <deque>
#include <functional>
#include <future>
#include <memory>

namespace host {

class WorkQueue {
  public:
    struct Job {
        /// Called on the main thread when all jobs before are done; may be empty.
        std::function<void()> prepare;
        /// Called on the thread. Must own all that it uses.
        std::function<void()> work;
        /// Called on the main thread, from the default main context; may be empty.
        std::function<void()> done;
    };

    WorkQueue() = default;
    WorkQueue(const WorkQueue&) = delete;
    WorkQueue& operator=(const WorkQueue&) = delete;
    ~WorkQueue();

    void add(Job job);

    /// Does the jobs that are left, until the timeout; for when the main loop is over. Calls no `done`.
    void finish(std::chrono::milliseconds timeout);

  private:
    void start();
    void end();

    /// The first is being done. The thread may outlive this.
    std::deque<std::shared_ptr<Job>> jobs_;
    std::future<void> worked_;
};

} // namespace host
