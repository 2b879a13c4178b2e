#include "Platform/Widgets/LineReader.h"

#include <array>
#include <cerrno>
#include <poll.h>
#include <string_view>
#include <unistd.h>

namespace platform {
namespace {

constexpr std::size_t chunkSize = std::size_t{64} << 10U;

} // namespace

std::optional<LineReader::Line> LineReader::next() {
    std::size_t searched = 0;
    while (true) {
        const auto pending = std::string_view(buffer_).substr(start_);
        const std::size_t end = pending.find('\n', searched);
        const bool complete = end != std::string_view::npos;
        const std::size_t length = complete ? end : pending.size();
        if (skipping_ || length > maxLength) {
            // Reported before the line's end, which may never come.
            const bool isNew = !skipping_;
            skipping_ = !complete;
            start_ += complete ? length + 1 : length;
            searched = 0;
            if (isNew) {
                return Line{.text = {}, .tooLong = true};
            }
            if (complete) {
                continue;
            }
        } else if (complete) {
            start_ += length + 1;
            return Line{.text = std::string(pending.substr(0, length))};
        } else {
            searched = length;
        }
        if (fill() == Fill::end) {
            if (outputClosed_ || start_ == buffer_.size()) {
                return std::nullopt;
            }
            Line last{.text = buffer_.substr(start_)};
            start_ = buffer_.size();
            return last;
        }
    }
}

LineReader::Fill LineReader::fill() {
    buffer_.erase(0, start_);
    start_ = 0;
    if (buffer_.empty() && buffer_.capacity() > chunkSize) {
        buffer_.shrink_to_fit();
    }
    while (!ended_) {
        std::array<pollfd, 2> watched{pollfd{input_, POLLIN, 0}, pollfd{output_, 0, 0}};
        if (poll(watched.data(), watched.size(), -1) < 0) {
            if (errno == EINTR) {
                continue;
            }
            break;
        }
        if ((watched[1].revents & (POLLERR | POLLNVAL)) != 0) {
            outputClosed_ = true;
            break;
        }
        if (watched[0].revents == 0) {
            continue;
        }
        std::array<char, chunkSize> chunk; // NOLINT(*-member-init): read fills it
        const ssize_t count = read(input_, chunk.data(), chunk.size());
        if (count > 0) {
            buffer_.append(chunk.data(), static_cast<std::size_t>(count));
            return Fill::more;
        }
        if (count == 0 || (errno != EINTR && errno != EAGAIN)) {
            break;
        }
    }
    ended_ = true;
    return Fill::end;
}

} // namespace platform
