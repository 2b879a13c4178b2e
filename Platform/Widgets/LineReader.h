// Reads lines of a bounded length from a descriptor.
//
// Waiting for input also watches the process's output: when its reader has closed it, waiting ends.
#pragma once

#include <cstddef>
#include <optional>
#include <string>

namespace platform {

class LineReader {
  public:
    static constexpr std::size_t maxLength = std::size_t{1} << 20U;

    /// Reads from `input` and watches `output`; both stay the caller's.
    LineReader(int input, int output) : input_(input), output_(output) {}

    struct Line {
        std::string text;
        /// The line was longer than `maxLength`; `text` is empty, and the rest is passed over.
        bool tooLong = false;
    };

    /// The next line without its end, waiting for it; nothing at the end of input, on a read error, or when the output
    /// is closed. What stands after the last line's end counts as a line. One thread at a time.
    std::optional<Line> next();

    /// Whether `next` ended because the output is closed.
    bool outputClosed() const { return outputClosed_; }

  private:
    enum class Fill { more, end };
    Fill fill();

    int input_;
    int output_;
    std::string buffer_;
    std::size_t start_ = 0;
    bool skipping_ = false;
    bool ended_ = false;
    bool outputClosed_ = false;
};

} // namespace platform
