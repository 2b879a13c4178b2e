// A first look for whoever has no library yet: a home with examples in it, as installed with the host.
#pragma once

#include "Platform/Foundation/Expected.h"

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace host {

/// What to tell a user whose extensions have nothing to read; nothing where no folder is missing.
std::optional<std::string> libraryNotice(const std::vector<std::filesystem::path>& missing);

/// The installed examples, a home folder; nothing where there are none.
std::optional<std::filesystem::path> examplesFolder();

/// Copies them, afresh, to a folder of the user's own, because extensions keep a container in the home that they are
/// given. The error is one clear line.
platform::Expected<std::filesystem::path, std::string> copyExamples();

} // namespace host
