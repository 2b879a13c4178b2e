// Why an operation failed: a kind, which a caller may act on, and a sentence for people.
//
//     Outcome<Manifest> manifest = readManifest(path);
//     if (!manifest) { logWarning(manifest.error().message); }
#pragma once

#include "Platform/Foundation/Expected.h"

#include <optional>
#include <string>
#include <utility>

namespace platform {

struct Failure {
    /// The numbers are those of sysexits(3), so that a program's exit code follows from the kind.
    enum class Kind {
        /// The request is wrong: the command line, an id, a choice.
        usage = 64,
        /// Data that was read is not in the form that it must have.
        malformed = 65,
        /// A program or file that is needed is missing or busy, died, does not respond, or sends invalid data.
        unavailable = 69,
        /// A file, or the output, cannot be written.
        unwritable = 73,
        /// A file of the program's own is broken, of a newer version, or cannot be read.
        unreadable = 78,
    };
    Kind kind = Kind::unavailable;
    /// One line in English, without the program's name and without a full stop. Empty if it was reported already.
    std::string message;
    bool operator==(const Failure&) const = default;
};

template <class Value>
using Outcome = Expected<Value, Failure>;

inline Unexpected<Failure> unavailable(std::string message) {
    return {{Failure::Kind::unavailable, std::move(message)}};
}

/// Returns the exit code for `failure`; 0 without one.
inline int exitCode(const std::optional<Failure>& failure) {
    return failure ? static_cast<int>(failure->kind) : 0;
}

} // namespace platform
