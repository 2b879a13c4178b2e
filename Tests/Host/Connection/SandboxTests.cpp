// Tests the rules by children that confine themselves, and what manifests grant.
#include "Host/Connection/Manifest.h"
#include "Host/Connection/Sandbox.h"

#include "Tests/Support/ChildProcess.h"
#include "Tests/Support/TemporaryFolder.h"

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/socket.h>

namespace host {
namespace {

namespace fs = std::filesystem;
using platform::TemporaryFolder;

/// Returns the errno of `attempt` in a child that has confined itself.
int errorWithin(const Sandbox& sandbox, const std::function<int()>& attempt) {
    const int status = platform::statusOf(platform::startProcess([&]() -> bool {
        _exit(sandbox.apply().step != Sandbox::Step::none ? 255 : attempt() < 0 ? errno : 0);
    }));
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
    Sandbox sandbox = Sandbox::prepare(rules_, 0);
    EXPECT_FALSE(sandbox.needsRestart());
    EXPECT_EQ(errorWithin(sandbox, [] { return socket(AF_INET, SOCK_STREAM, 0); }), EACCES);
    EXPECT_EQ(errorWithin(sandbox, [] { return socket(AF_INET6, SOCK_DGRAM, 0); }), EACCES);
    EXPECT_EQ(errorWithin(sandbox, [] { return socket(AF_NETLINK, SOCK_RAW, 0); }), EACCES);
    EXPECT_EQ(errorWithin(sandbox, [] { return socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0); }), 0);
    EXPECT_EQ(errorWithin(sandbox, [] { return socket(AF_UNIX, SOCK_SEQPACKET, 0); }), EACCES);
    sandbox.disableUserNamespace();
    EXPECT_EQ(errorWithin(sandbox, [] { return fork(); }), EAGAIN);
}

TEST(Sandbox, NeedsRestartWhenAGrantedFileIsReplaced) {
    if (landlockVersion() == 0) {
        GTEST_SKIP() << "this kernel has no Landlock, so nothing is bound to what stood there";
    }
    // Commands of the shell for the granted (P)ath.
    struct Row {
        const char* name;
        const char* before;
        const char* after;
        bool isOutdated;
    };
    const Row rows[]{
        {"still absent", "true", "true", false},
        {"appeared", "true", "mkdir $P", true},
        {"unchanged", "mkdir $P", "true", false},
        {"other content", "mkdir $P", "mkdir $P/more", false},
        {"gone", "mkdir $P", "rmdir $P", true},
        {"replaced", "mkdir $P", "mkdir $P.new; rmdir $P; mv $P.new $P", true},
        {"now a link", "mkdir $P", "rmdir $P; ln -s /usr $P", true},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const TemporaryFolder folder;
        const std::string path = folder.path("granted");
        setenv("P", path.c_str(), 1);
        ASSERT_EQ(std::system(row.before), 0);
        const Sandbox sandbox = Sandbox::prepare({.files = {{path, FileAccess::read}}});
        ASSERT_EQ(std::system(row.after), 0);
        EXPECT_EQ(sandbox.needsRestart(), row.isOutdated);
    }
}

TEST(ScriptInterpreter, IsWhatTheFirstLineNames) {
    const TemporaryFolder folder;
    const std::pair<std::string, std::optional<fs::path>> rows[]{
        {"#!/bin/sh\necho", "/bin/sh"},
        {"#! /usr/bin/env  python3\n", "/usr/bin/env"},
        {"#!\t/bin/sh", "/bin/sh"},
        {"#!" + std::string(1000, 'x'), std::string(254, 'x')},
        {"#!\n", ""},
        {"# !/bin/sh", std::nullopt},
        {"", std::nullopt},
    };
    for (const auto& [content, interpreter] : rows) {
        EXPECT_EQ(scriptInterpreter(folder.write("program", content)), interpreter) << content;
    }
    EXPECT_EQ(scriptInterpreter(folder.path("missing")), std::nullopt);
    EXPECT_EQ(scriptInterpreter(folder.path("")), std::nullopt);
}

platform::Outcome<Manifest> manifestWith(const std::string& members) {
    const TemporaryFolder folder;
    return readManifest(folder.write("x.json", R"({"identifier": "x", "executable": "y")" +
                                                   (members.empty() ? "" : ", " + members) + "}"));
}

TEST(Manifest, GrantsNothingUnlessItSaysSo) {
    for (const char* members : {"", R"("network": 1, "reads": "Library")"}) {
        const auto manifest = manifestWith(members);
        ASSERT_TRUE(manifest) << members;
        EXPECT_FALSE(manifest->network) << members;
        EXPECT_THAT(manifest->reads, testing::IsEmpty()) << members;
    }
    const auto manifest = manifestWith(R"("reads": ["Library/A B", ".config/x/", "..x"], "network": true)");
    ASSERT_TRUE(manifest) << manifest.error().message;
    EXPECT_THAT(manifest->reads, testing::ElementsAre("Library/A B", ".config/x/", "..x"));
    EXPECT_TRUE(manifest->network);
    EXPECT_EQ(manifest->name, "x");
    EXPECT_EQ(manifestWith(R"("name": "Ten Widgets")")->name, "Ten Widgets");
    for (const char* folder : {R"("")", R"("././")", R"("..")", R"("a/../..")", R"("a/..")", R"("/etc")", "7"}) {
        EXPECT_FALSE(manifestWith(std::string(R"("reads": ["Library", )") + folder + "]")) << folder;
    }
}

} // namespace
} // namespace host
