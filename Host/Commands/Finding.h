// What a check of the machine has found: one line each for people, and for programs.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace host {

struct Finding {
    enum class State {
        ok,
        /// Widgets are shown, but with less than they could have.
        note,
        /// Widgets, their data or their links do not work.
        problem,
    };
    /// What was checked, in a word or two; the same on every machine.
    std::string name;
    State state = State::ok;
    /// What was found, one line. It may contain texts from extensions and files.
    std::string what;
    /// What to do about it, one line; empty where all is well.
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
