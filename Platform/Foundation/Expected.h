// The value of an operation, or why it failed.
//
//     Expected<Manifest, std::string> manifest = readManifest(path);
//     if (!manifest) { complain(manifest.error()); }
#pragma once

#include <utility>
#include <variant>

namespace platform {

/// Marks a value as an error: `return Unexpected{"no such file"};`
template <class Error>
struct Unexpected {
    Error error;
};
template <class Error>
Unexpected(Error) -> Unexpected<Error>;

template <class Value, class Error>
class [[nodiscard]] Expected {
  public:
    // Both are implicit, so that a function may simply return what it has.
    Expected(Value value) : content_(std::in_place_index<0>, std::move(value)) {}
    template <class Reason>
    Expected(Unexpected<Reason> unexpected) : content_(std::in_place_index<1>, std::move(unexpected.error)) {}

    explicit operator bool() const { return content_.index() == 0; }

    /// Requires a value.
    const Value& operator*() const& { return *std::get_if<0>(&content_); }
    Value& operator*() & { return *std::get_if<0>(&content_); }
    Value&& operator*() && { return std::move(*std::get_if<0>(&content_)); }
    const Value* operator->() const { return std::get_if<0>(&content_); }
    Value* operator->() { return std::get_if<0>(&content_); }

    /// Requires an error.
    const Error& error() const { return *std::get_if<1>(&content_); }

  private:
    std::variant<Value, Error> content_;
};

} // namespace platform
