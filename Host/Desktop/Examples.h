// Examples for users without a library: a home that is installed with the host.
#pragma once

#include "Host/Desktop/Labels.h"
#include "Platform/Foundation/Expected.h"

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace host {

/// Returns the message that these folders are missing, with a button that offers examples if there are any.
StatusMessage noLibraryMessage(const std::vector<std::filesystem::path>& missing);

/// Returns the home folder of the installed examples; nothing if there are none.
std::optional<std::filesystem::path> examplesFolder();

/// Returns the folder that `copyExamples` writes; a relative path if the user has no data folder.
std::filesystem::path examplesHome();

/// Copies the examples to the user's data folder, in place of an earlier copy, since extensions write a container into
/// their home. The error is one clear line.
platform::Expected<std::filesystem::path, std::string> copyExamples();

} // namespace host
