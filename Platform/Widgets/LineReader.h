// Reads lines of a bounded length from a descriptor.
//
// Waiting for input ends also when the reader of the output closes it.
#pragma once

#include <cstddef>
#include <optional>
#include <string>

namespace platform {

class LineReader {
  public:
    static constexpr std::size_t maxLength = std::size_t{1} << 20U;

    /// Reads from `input` and watches `output`. Borrows both.
    LineReader(int input, int output) : input_(input), output_(output) {}

    struct Line {
        std::string text;
        /// The line is longer than `maxLength`; `text` is empty, and the rest is skipped.
        bool tooLong = false;
    };

    /// Waits for the next line and returns it without its end. Returns nothing at the end of input, after an error, or
    /// if the output is closed. Text after the last line's end counts as a line. One thread at a time.
    std::optional<Line> next();

    /// Returns whether `next` ended because the output is closed.
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
