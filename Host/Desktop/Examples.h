// A first look for whoever has no library yet: a home with examples in it, as installed with the host.
#pragma once

#include "Host/Desktop/Labels.h"
#include "Platform/Foundation/Expected.h"

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace host {

/// What to tell a user whose extensions have nothing to read in these folders, with the offer of examples if there are
/// any.
StatusMessage noLibraryMessage(const std::vector<std::filesystem::path>& missing);

/// The installed examples, a home folder; nothing where there are none.
std::optional<std::filesystem::path> examplesFolder();

/// Where `copyExamples` puts them; relative without a folder for it.
std::filesystem::path examplesHome();

/// Copies them, afresh, to a folder of the user's own, because extensions keep a container in the home that they are
/// given. The error is one clear line.
platform::Expected<std::filesystem::path, std::string> copyExamples();

} // namespace host
