// Runs jobs that may block, such as disk access, on another thread, in order.
//
// The thread exists only while there are jobs. Called on the main thread.
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
        /// Called on the main thread after all jobs before; may be empty.
        std::function<void()> prepare;
        /// Called on the other thread. Must own all that it uses.
        std::function<void()> work;
        /// Called on the main thread, from the default main context; may be empty.
        std::function<void()> done;
    };

    WorkQueue() = default;
    WorkQueue(const WorkQueue&) = delete;
    WorkQueue& operator=(const WorkQueue&) = delete;
    ~WorkQueue();

    void add(Job job);

    /// Runs the jobs that are left, until the timeout, after the main loop has ended. Calls no `done`.
    void finish(std::chrono::milliseconds timeout);

  private:
    void start();
    void end();

    /// The first one is running. Its thread may outlive this.
    std::deque<std::shared_ptr<Job>> jobs_;
    std::future<void> worked_;
};

} // namespace host
