// Tests the rules by children that confine themselves.
#include "Host/Connection/Sandbox.h"

#include "Tests/Support/TemporaryFolder.h"

#include <cerrno>
#include <fcntl.h>
#include <functional>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

namespace host {
namespace {

namespace fs = std::filesystem;
using platform::TemporaryFolder;

/// Returns the errno of a system call's result.
int errorOf(int answer) {
    return answer < 0 ? errno : 0;
}

/// Returns the errno of `attempt` in a child that has confined itself.
int errorWithin(const Sandbox& sandbox, const std::function<int()>& attempt) {
    const pid_t child = fork();
    if (child == 0) {
        _exit(sandbox.apply().step == Sandbox::Step::none ? errorOf(attempt()) : 255);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

class ConfinedChild : public testing::Test {
  protected:
    TemporaryFolder folder_;
    const std::string secret_ = folder_.write("secret", "x");
    const bool made_ = fs::create_directory(folder_.path("granted"));
    const std::string granted_ = folder_.write("granted/file", "x");
    const SandboxRules rules_{.files = {{folder_.path("granted"), FileAccess::read}}};

    int openWithin(int landlock, const std::string& path, int flags) const {
        return errorWithin(Sandbox::prepare(rules_, landlock), [&] { return open(path.c_str(), flags); });
    }
};

TEST_F(ConfinedChild, LandlockRestrictsWhatItsVersionCan) {
    if (landlockVersion() == 0) {
        GTEST_SKIP() << "this kernel has no Landlock";
    }
    for (int version = 1; version <= landlockVersion(); ++version) {
        SCOPED_TRACE(version);
        EXPECT_EQ(openWithin(version, granted_, O_RDONLY), 0);
        EXPECT_EQ(openWithin(version, granted_, O_WRONLY), EACCES);
        EXPECT_EQ(openWithin(version, secret_, O_RDONLY), EACCES);
        const Sandbox sandbox = Sandbox::prepare(rules_, version);
        EXPECT_EQ(errorWithin(sandbox, [&] { return truncate(secret_.c_str(), 1); }), version >= 3 ? EACCES : 0);
        EXPECT_EQ(errorWithin(sandbox, [] { return kill(getppid(), 0); }), version >= 6 ? EPERM : 0);
    }
}

TEST_F(ConfinedChild, TheFilterHoldsWithoutLandlock) {
    EXPECT_EQ(openWithin(0, secret_, O_RDONLY), 0);
    const Sandbox sandbox = Sandbox::prepare(rules_, 0);
    EXPECT_FALSE(sandbox.needsRestart());
    EXPECT_EQ(errorWithin(sandbox, [] { return socket(AF_INET, SOCK_STREAM, 0); }), EACCES);
    EXPECT_EQ(errorWithin(sandbox, [] { return socket(AF_INET6, SOCK_DGRAM, 0); }), EACCES);
    EXPECT_EQ(errorWithin(sandbox, [] { return socket(AF_NETLINK, SOCK_RAW, 0); }), EACCES);
    EXPECT_EQ(errorWithin(sandbox, [] { return socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0); }), 0);
    EXPECT_EQ(errorWithin(sandbox, [] { return socket(AF_UNIX, SOCK_SEQPACKET, 0); }), EACCES);
}

TEST_F(ConfinedChild, HasNoProcessesWithoutANamespace) {
    Sandbox sandbox = Sandbox::prepare(rules_, 0);
    sandbox.disableUserNamespace();
    EXPECT_EQ(errorWithin(sandbox, [] { return fork(); }), EAGAIN);
}

TEST(Sandbox, NeedsRestartWhenAGrantedFileIsReplaced) {
    if (landlockVersion() == 0) {
        GTEST_SKIP() << "this kernel has no Landlock, so nothing is bound to what stood there";
    }
    using Change = std::function<void(const fs::path&)>;
    const Change nothing = [](const fs::path&) {};
    const Change make = [](const fs::path& path) { fs::create_directory(path); };
    const Change fill = [](const fs::path& path) { fs::create_directory(path / "more"); };
    const Change remove = [](const fs::path& path) { fs::remove_all(path); };
    const Change replace = [](const fs::path& path) {
        fs::remove_all(path);
        fs::create_directory(path);
    };
    const Change link = [](const fs::path& path) {
        fs::remove_all(path);
        fs::create_directory_symlink("/usr", path);
    };
    struct Row {
        const char* name;
        const Change& before;
        const Change& after;
        bool isOutdated;
    };
    const std::vector<Row> rows{
        {"still absent", nothing, nothing, false},
        {"appeared", nothing, make, true},
        {"unchanged", make, nothing, false},
        {"other content", make, fill, false},
        {"gone", make, remove, true},
        {"replaced", make, replace, true},
        {"now a link", make, link, true},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const TemporaryFolder folder;
        const std::string path = folder.path("granted");
        row.before(path);
        const Sandbox sandbox = Sandbox::prepare({.files = {{path, FileAccess::read}}});
        row.after(path);
        EXPECT_EQ(sandbox.needsRestart(), row.isOutdated);
    }
}

TEST(ScriptInterpreter, IsWhatTheFirstLineNames) {
    const TemporaryFolder folder;
    const std::vector<std::pair<std::string, std::optional<fs::path>>> rows{
        {"#!/bin/sh\necho", "/bin/sh"},
        {"#! /usr/bin/env  python3\n", "/usr/bin/env"},
        {"#!\t/bin/sh", "/bin/sh"},
        {"#!/bin/sh -e\n", "/bin/sh"},
        {"#!", ""},
        {"#!\n", ""},
        {"#!" + std::string(1000, 'x'), std::string(254, 'x')},
        {"\x7f"
         "ELF",
         std::nullopt},
        {"# !/bin/sh", std::nullopt},
        {"", std::nullopt},
    };
    for (const auto& [content, interpreter] : rows) {
        EXPECT_EQ(scriptInterpreter(folder.write("program", content)), interpreter) << content;
    }
    EXPECT_EQ(scriptInterpreter(folder.path("missing")), std::nullopt);
    EXPECT_EQ(scriptInterpreter(folder.path("")), std::nullopt);
}

} // namespace
} // namespace host
