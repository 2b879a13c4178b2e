// Child processes.
#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <functional>
#include <sys/wait.h>
#include <unistd.h>

namespace platform {

/// Starts a process that calls `work` until it returns false, and then exits with success.
inline pid_t startProcess(const std::function<bool()>& work) {
    const pid_t child = fork();
    if (child == 0) {
        while (work()) {
        }
        _exit(EXIT_SUCCESS);
    }
    EXPECT_GT(child, 0);
    return child;
}

/// Waits for the end of a process. Returns its status as waitpid(2) does.
inline int statusOf(pid_t child) {
    int status = -1;
    EXPECT_EQ(waitpid(child, &status, 0), child);
    return status;
}

} // namespace platform
