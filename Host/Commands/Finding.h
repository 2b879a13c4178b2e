// The result of a check of the machine.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace host {

struct Finding {
    enum class State {
        ok,
        /// Widgets work, with limits.
        note,
        /// Widgets, their data or their links do not work.
        problem,
    };
    /// Name of the check, one or two words, the same on every machine.
    std::string name;
    State state = State::ok;
    /// One line. May contain text from extensions and files, even control characters.
    std::string what;
    /// What to do, one line; empty if the state is ok.
    std::string fix;

    static Finding ok(std::string name, std::string what) { return {std::move(name), State::ok, std::move(what), {}}; }
    static Finding note(std::string name, std::string what, std::string fix) {
        return {std::move(name), State::note, std::move(what), std::move(fix)};
    }
    static Finding problem(std::string name, std::string what, std::string fix) {
        return {std::move(name), State::problem, std::move(what), std::move(fix)};
    }
};

using Findings = std::vector<Finding>;

} // namespace host
