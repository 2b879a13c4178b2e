// line_benchmark ROUNDS REQUEST COMMAND… -- COMMAND…: two programs that answer lines and are kept running; times one
// line in to one line out, by turns.

#include "Benchmarks/Child.h"
#include "Benchmarks/Rounds.h"

int main(int argc, char** argv) {
    const auto [first, second] = benchmarks::twoCommands(argc, argv, 3);
    const std::string request = std::string(argv[2]) + "\n";
    const benchmarks::Child ours(first);
    const benchmarks::Child peer(second);
    const auto ask = [&request](const benchmarks::Child& child) {
        child.send(request);
        child.awaitLine();
    };
    benchmarks::timeByTurns({{"ours", [&] { ask(ours); }}, {"peer", [&] { ask(peer); }}}, std::atoi(argv[1]));
}
