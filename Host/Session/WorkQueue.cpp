#include "Host/Session/WorkQueue.h"

#include <glib.h>

#include <thread>

namespace host {

WorkQueue::~WorkQueue() {
    while (g_idle_remove_by_data(this) != FALSE) {
    }
}

void WorkQueue::add(Job job) {
    jobs_.push_back(std::make_shared<Job>(std::move(job)));
    if (jobs_.size() == 1) {
        start();
    }
}

void WorkQueue::start() {
    if (jobs_.front()->prepare) {
        jobs_.front()->prepare();
    }
    std::promise<void> worked;
    worked_ = worked.get_future();
    std::thread([this, job = jobs_.front(), worked = std::move(worked)]() mutable {
        job->work();
        // The job must be destroyed on the main thread.
        job.reset();
        const auto ended = [](gpointer self) {
            static_cast<WorkQueue*>(self)->end();
            return G_SOURCE_REMOVE;
        };
        g_idle_add_full(G_PRIORITY_DEFAULT, ended, this, nullptr);
        worked.set_value();
    }).detach();
}

void WorkQueue::end() {
    // Removed only afterwards, so that a job that `done` adds does not start a second thread.
    if (jobs_.front()->done) {
        jobs_.front()->done();
    }
    jobs_.pop_front();
    if (!jobs_.empty()) {
        start();
    }
}

void WorkQueue::finish(std::chrono::milliseconds timeout) {
    const auto deadline = std::chrono::steady_clock::now() + timeout;
    while (!jobs_.empty() && worked_.wait_until(deadline) == std::future_status::ready) {
        jobs_.pop_front();
        if (!jobs_.empty()) {
            start();
        }
    }
}

} // namespace host
