// Times pieces of work by turns, so that what else the machine does falls on all of them alike.
#pragma once

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>
#include <string>
#include <vector>

namespace benchmarks {

struct Work {
    std::string name;
    std::function<void()> run;
    std::vector<double> seconds = {};
};

inline double median(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

/// Runs each work once to warm up and then `rounds` times, by turns, and prints the medians as one JSON object.
inline void timeByTurns(std::vector<Work> works, int rounds) {
    for (int round = -1; round < rounds; ++round) {
        for (Work& work : works) {
            const auto start = std::chrono::steady_clock::now();
            work.run();
            const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
            if (round >= 0) {
                work.seconds.push_back(taken.count());
            }
        }
    }
    std::printf("{");
    for (const Work& work : works) {
        std::printf("%s\"%s\": %.9f", &work == &works.front() ? "" : ", ", work.name.c_str(), median(work.seconds));
    }
    std::printf("}\n");
}

} // namespace benchmarks
