// How a command's result is worded, and where it goes: standard output, or a file.
#pragma once

#include "Platform/Foundation/Failure.h"

#include <filesystem>
#include <optional>
#include <string_view>

namespace host {

using platform::Failure;

enum class TextFormat { people, json };

/// Writes `bytes` to `file`, whole or not at all, or to standard output where there is none.
std::optional<Failure> writeOutput(std::string_view bytes, const std::optional<std::filesystem::path>& file);

} // namespace host
