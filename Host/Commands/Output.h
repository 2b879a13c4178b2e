// The form of a command's result, and its output: standard output or a file.
#pragma once

#include "Platform/Foundation/Failure.h"

#include <filesystem>
#include <optional>
#include <string_view>

namespace host {

using platform::Failure;

enum class TextFormat { text, json };

/// Writes `bytes` to `file`, whole or not at all, or to standard output without one. Fails with `unwritable`.
std::optional<Failure> writeOutput(std::string_view bytes, const std::optional<std::filesystem::path>& file);

} // namespace host
