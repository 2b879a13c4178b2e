// What the rules grant and, above all, what they do not; whether the kernel keeps them is ConfinementTests' matter.
#include "Host/Connection/ConfinementRules.h"

#include "Tests/Support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace host {
namespace {

namespace fs = std::filesystem;

const Manifest manifest{.identifier = "probe",
                        .executable = "/home/ada/.local/bin/probe",
                        .reads = {"Library/Application Support/FOLIOvault"},
                        .network = false};

ExtensionEnvironment environmentWith(std::vector<std::string> variables = {}) {
    return {
        .home = "/home/ada", .container = "/home/ada/.local/share/containers/probe", .variables = std::move(variables)};
}

bool isBelow(const fs::path& path, const fs::path& folder) {
    return std::mismatch(folder.begin(), folder.end(), path.begin(), path.end()).first == folder.end();
}

/// What may be done with `path`: a letter for each kind of grant that covers it.
std::string accessTo(const fs::path& path, const ConfinementRules& rules) {
    std::string letters;
    for (const FileGrant& grant : rules.files) {
        if (isBelow(path, grant.path)) {
            letters += "rxwo"[static_cast<std::size_t>(grant.access)];
        }
    }
    return letters;
}

struct Row {
    std::string path;
    std::string access;
};

void expectAccess(const std::vector<Row>& rows, const ConfinementRules& rules) {
    for (const Row& row : rows) {
        EXPECT_EQ(accessTo(row.path, rules), row.access) << row.path;
    }
}

TEST(ConfinementRules, GrantWhatTheManifestSaysAndNoMore) {
    const ConfinementRules rules = confinementRules(manifest, environmentWith(), std::nullopt);
    EXPECT_EQ(rules.network, NetworkAccess::none);
    expectAccess(
        {
            {"/home/ada/Library/Application Support/FOLIOvault/Favorites.plist", "r"},
            {"/home/ada/.local/share/containers/probe/Caches/x", "o"},
            {"/home/ada/.local/bin/probe", "x"},
            {"/home/ada/.local/share/locale/de/LC_MESSAGES/x.mo", "r"},
            {"/usr/lib/x86_64-linux-gnu/libc.so.6", "x"},
            {"/lib64/ld-linux-x86-64.so.2", "x"},
            {"/etc/passwd", "r"},
            {"/usr/share/zoneinfo/Asia/Tokyo", "r"},
            {"/dev/null", "w"},
            {"/home/ada", ""},
            {"/home/ada/.ssh/id_ed25519", ""},
            {"/home/ada/Library/Application Support", ""},
            {"/home/ada/.local/bin/other", ""},
            {"/home/ada/.local/share/containers/other", ""},
            {"/etc/shadow", ""},
            {"/etc/ssl/certs/x.pem", ""},
            {"/etc/ssl/private/x.key", ""},
            {"/etc/resolv.conf", ""},
            {"/usr/share/fonts/x.ttf", ""},
            {"/usr/bin/env", ""},
            {"/tmp/x", ""},
            {"/run/user/1000/bus", ""},
        },
        rules);
}

TEST(ConfinementRules, NetworkTakesCertificatesAndNames) {
    Manifest connecting = manifest;
    connecting.network = true;
    const auto environment =
        environmentWith({"SSL_CERT_FILE=/opt/ca.pem", "SSL_CERT_DIR=/opt/a:/opt/b:relative:", "SSL_CERT_DIRECTORY=/x"});
    const ConfinementRules rules = confinementRules(connecting, environment, std::nullopt);
    EXPECT_EQ(rules.network, NetworkAccess::connections);
    expectAccess({{"/opt/ca.pem", "r"},
                  {"/opt/a/x", "r"},
                  {"/opt/b/x", "r"},
                  {"/opt", ""},
                  {"/x", ""},
                  {"relative", ""},
                  {"/etc/ssl/certs/x.pem", "r"},
                  {"/etc/ssl/private/x.key", ""},
                  {"/etc/resolv.conf", "r"}},
                 rules);
    expectAccess({{"/opt/ca.pem", ""}}, confinementRules(manifest, environment, std::nullopt));
}

TEST(ConfinementRules, ScriptsMayUseCommands) {
    const ConfinementRules rules = confinementRules(manifest, environmentWith(), "/opt/python/bin/python3");
    expectAccess({{"/opt/python/bin/python3", "x"}, {"/opt/python/bin/pip", ""}, {"/usr/bin/env", "x"}}, rules);
}

TEST(ConfinementRules, AZoneMayBeAFile) {
    const auto zone = [](const char* variable) {
        return accessTo("/opt/zone", confinementRules(manifest, environmentWith({variable}), std::nullopt));
    };
    EXPECT_EQ(zone("TZ=:/opt/zone"), "r");
    EXPECT_EQ(zone("TZ=/opt/zone"), "r");
    EXPECT_EQ(zone("TZ=opt/zone"), "");
}

TEST(ConfinementRules, WithoutAHomeNothingOfItIsGranted) {
    auto environment = environmentWith();
    environment.home.clear();
    const ConfinementRules rules = confinementRules(manifest, environment, std::nullopt);
    for (const FileGrant& grant : rules.files) {
        EXPECT_TRUE(grant.path.starts_with('/')) << grant.path;
        EXPECT_EQ(grant.path.find("Library"), std::string::npos) << grant.path;
    }
}

TEST(ScriptInterpreter, IsWhatTheFirstLineNames) {
    const platform::TemporaryFolder folder;
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
