// Times pieces of work by turns, so that what else the machine does falls on all of them alike.
#pragma once

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <memory>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace benchmarks {

struct Work {
    std::string name;
    std::function<void()> run;
    /// Called after each run, untimed; may be empty.
    std::function<void()> cleanUp = {};
};

inline double median(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

/// A process that does one work each time it is told to: what one work leaves on the heap is not another's burden.
class Worker {
  public:
    explicit Worker(const Work& work) {
        std::array<int, 2> orders{};
        std::array<int, 2> times{};
        if (pipe(orders.data()) != 0 || pipe(times.data()) != 0 || (process_ = fork()) < 0) {
            std::perror("cannot start a worker");
            std::exit(1);
        }
        if (process_ == 0) {
            close(orders[1]);
            close(times[0]);
            serve(work, orders[0], times[1]);
        }
        close(orders[0]);
        close(times[1]);
        orders_ = orders[1];
        times_ = times[0];
    }
    Worker(const Worker&) = delete;
    Worker& operator=(const Worker&) = delete;
    ~Worker() {
        close(orders_);
        close(times_);
        waitpid(process_, nullptr, 0);
    }

    /// Seconds that one more run takes.
    double run() const {
        const char order = '!';
        double seconds = 0;
        if (write(orders_, &order, 1) != 1 || read(times_, &seconds, sizeof seconds) != sizeof seconds) {
            std::exit(1);
        }
        return seconds;
    }

  private:
    [[noreturn]] static void serve(const Work& work, int orders, int times) {
        for (char order = 0; read(orders, &order, 1) == 1;) {
            const auto start = std::chrono::steady_clock::now();
            work.run();
            const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
            const double seconds = taken.count();
            if (work.cleanUp) {
                work.cleanUp();
            }
            if (write(times, &seconds, sizeof seconds) != sizeof seconds) {
                break;
            }
        }
        _exit(0);
    }

    pid_t process_ = 0;
    int orders_ = -1;
    int times_ = -1;
};

/// Runs each work twice to warm up and then `rounds` times, by turns, and prints the medians as one JSON object.
inline void timeByTurns(const std::vector<Work>& works, int rounds) {
    std::vector<std::vector<double>> seconds(works.size());
    {
        std::vector<std::unique_ptr<Worker>> workers;
        for (const Work& work : works) {
            workers.push_back(std::make_unique<Worker>(work));
        }
        for (int round = -2; round < rounds; ++round) {
            for (std::size_t i = 0; i < works.size(); ++i) {
                const double taken = workers[i]->run();
                if (round >= 0) {
                    seconds[i].push_back(taken);
                }
            }
        }
        // A worker has copies of the ends of those started before it, so the last ends first.
        while (!workers.empty()) {
            workers.pop_back();
        }
    }
    std::printf("{");
    for (std::size_t i = 0; i < works.size(); ++i) {
        std::printf("%s\"%s\": %.9f", i == 0 ? "" : ", ", works[i].name.c_str(), median(seconds[i]));
    }
    std::printf("}\n");
}

} // namespace benchmarks
