// Where and in which form a command writes its result.
#pragma once

#include "Platform/Foundation/Failure.h"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace host {

using platform::Failure;

enum class TextFormat { text, json };

/// Writes `bytes` to `file`, whole or not at all, or without a file to standard output. Fails with `unwritable`.
std::optional<Failure> writeOutput(std::string_view bytes, const std::optional<std::filesystem::path>& file);

/// Replaces control characters by blanks. Text from extensions and files could move a terminal's cursor.
std::string printable(std::string text);

} // namespace host
