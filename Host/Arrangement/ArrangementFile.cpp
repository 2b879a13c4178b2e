#include "Host/Arrangement/ArrangementFile.h"

#include "Host/Arrangement/ArrangementJson.h"
#include "Host/Arrangement/FileLock.h"

#include <fmt/format.h>

#include <utility>

namespace host {
namespace {

using platform::Failure;
using platform::Outcome;
using platform::Unexpected;
using Kind = Failure::Kind;

Unexpected<Failure> error(Kind kind, std::string message) {
    return {{kind, std::move(message)}};
}

} // namespace

Outcome<Arrangement> ArrangementFile::load() const {
    auto content = read();
    if (!content) {
        return Unexpected{content.error()};
    }
    if (content->broken) {
        return refusal(*content->broken);
    }
    return std::move(content->arrangement);
}

Outcome<ArrangementFile::Update> ArrangementFile::update(const ArrangementChange& change) const {
    const auto lock = FileLock::lock(lockPath_, lockTimeout_);
    if (!lock) {
        return error(Kind::unwritable, lock.error().message);
    }
    auto content = read();
    if (!content) {
        return Unexpected{content.error()};
    }
    auto arrangement = applied(std::move(content->arrangement), change);
    if (!arrangement) {
        // The user needs to know that the file is broken, not that it lacks a widget.
        return content->broken ? refusal(*content->broken) : Unexpected{arrangement.error()};
    }
    const std::string json = arrangementJson(*arrangement);
    if (json.size() > maxArrangementFileSize) {
        return error(Kind::usage, fmt::format("the arrangement would be larger than {} bytes", maxArrangementFileSize));
    }
    Update update{.arrangement = *std::move(arrangement), .notice = {}};
    if (content->broken) {
        auto notice = setAside(*content->broken);
        if (!notice) {
            return Unexpected{notice.error()};
        }
        update.notice = *std::move(notice);
    }
    if (const auto failure = files_.replace(path_, json)) {
        return error(Kind::unwritable, failure->description);
    }
    return update;
}

Outcome<ArrangementFile::Content> ArrangementFile::read() const {
    // In this order, a file that appears meanwhile does not count as unreadable.
    if (!files_.exists(path_)) {
        return Content{};
    }
    const auto bytes = files_.read(path_);
    if (!bytes) {
        return error(Kind::unreadable, fmt::format("{} cannot be read; it stays unchanged", path_.string()));
    }
    auto arrangement = arrangementFromJson(bytes->bytes());
    if (arrangement) {
        return Content{.arrangement = *std::move(arrangement), .broken = {}};
    }
    const Failure& why = arrangement.error();
    if (why.kind == Kind::unreadable) {
        return error(Kind::unreadable,
                     fmt::format("{} is from a newer program ({}, this one reads {}); it stays unchanged",
                                 path_.string(), why.message, arrangementVersion));
    }
    return Content{.arrangement = {}, .broken = BrokenFile{.bytes = *bytes, .reason = why.message}};
}

Outcome<std::string> ArrangementFile::setAside(const BrokenFile& broken) const {
    std::string copy;
    int number = 0;
    do {
        copy = fmt::format("{}.broken-{}", path_.string(), ++number);
    } while (files_.exists(copy));
    if (const auto failure = files_.replace(copy, broken.bytes.bytes())) {
        return error(Kind::unwritable, failure->description);
    }
    return fmt::format("{} was broken ({}); it is kept as {}", path_.string(), broken.reason, copy);
}

Unexpected<Failure> ArrangementFile::refusal(const BrokenFile& broken) const {
    return error(Kind::unreadable, fmt::format("{} is broken ({}); it will be set aside when a widget is added",
                                               path_.string(), broken.reason));
}

} // namespace host
