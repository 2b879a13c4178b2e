// A program that is started, asked line by line, and waited for.
#pragma once

#include <array>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <spawn.h>
#include <string>
#include <string_view>
#include <sys/types.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>
#include <vector>

extern char** environ; // NOLINT(readability-redundant-declaration): POSIX leaves its declaration to the program

namespace benchmarks {

[[noreturn]] inline void fail(const char* what) {
    std::perror(what);
    std::exit(1);
}

class Child {
  public:
    /// Starts `command` with `request` waiting in its input.
    explicit Child(std::vector<std::string> command, std::string_view request = {}) {
        std::array<int, 2> input{};
        std::array<int, 2> output{};
        if (pipe(input.data()) != 0 || pipe(output.data()) != 0) {
            fail("pipe");
        }
        input_ = input[1];
        output_ = output[0];
        send(request);
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_adddup2(&actions, input[0], STDIN_FILENO);
        posix_spawn_file_actions_adddup2(&actions, output[1], STDOUT_FILENO);
        posix_spawn_file_actions_addclosefrom_np(&actions, STDERR_FILENO + 1);
        std::vector<char*> arguments;
        for (std::string& argument : command) {
            arguments.push_back(argument.data());
        }
        arguments.push_back(nullptr);
        if (posix_spawn(&process_, arguments.front(), &actions, nullptr, arguments.data(), environ) != 0) {
            fail(arguments.front());
        }
        posix_spawn_file_actions_destroy(&actions);
        close(input[0]);
        close(output[1]);
    }
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;
    ~Child() {
        kill(process_, SIGKILL);
        close(input_);
        close(output_);
        waitpid(process_, nullptr, 0);
    }

    void send(std::string_view bytes) const {
        if (write(input_, bytes.data(), bytes.size()) < 0) {
            fail("write");
        }
    }

    /// Reads until a line has ended; it is an error if the program ends before.
    void awaitLine() const {
        if (!readUntil('\n')) {
            fail("no answer");
        }
    }

    /// Reads until the program ends its output.
    void awaitEnd() const {
        while (readUntil('\n')) {
        }
    }

  private:
    bool readUntil(char last) const {
        static std::array<char, 65536> chunk;
        for (ssize_t count = 0; (count = read(output_, chunk.data(), chunk.size())) > 0;) {
            if (chunk[static_cast<std::size_t>(count) - 1] == last) {
                return true;
            }
        }
        return false;
    }

    pid_t process_ = 0;
    int input_ = -1;
    int output_ = -1;
};

/// The two commands of a command line, from `first` on, with "--" between them.
inline std::pair<std::vector<std::string>, std::vector<std::string>> twoCommands(int argc, char** argv, int first) {
    std::pair<std::vector<std::string>, std::vector<std::string>> commands;
    bool second = false;
    for (int i = first; i < argc; ++i) {
        if (!second && std::strcmp(argv[i], "--") == 0) {
            second = true;
        } else {
            (second ? commands.second : commands.first).emplace_back(argv[i]);
        }
    }
    if (commands.first.empty() || commands.second.empty()) {
        std::fprintf(stderr, "usage: %s ROUNDS REQUEST COMMAND... -- COMMAND...\n", argv[0]);
        std::exit(64);
    }
    return commands;
}

} // namespace benchmarks
