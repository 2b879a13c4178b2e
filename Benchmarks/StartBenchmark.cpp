// start_benchmark ROUNDS REQUEST COMMAND… -- COMMAND…: starts two programs by turns and times them. The first gets the
// line REQUEST and counts until it has answered a line; the second counts until it has ended.

#include "Benchmarks/Child.h"
#include "Benchmarks/Rounds.h"

int main(int argc, char** argv) {
    const auto [ours, peer] = benchmarks::twoCommands(argc, argv, 3);
    const std::string request = std::string(argv[2]) + "\n";
    benchmarks::timeByTurns({{"ours", [&, ours = ours] { benchmarks::Child(ours, request).awaitLine(); }},
                             {"peer", [&, peer = peer] { benchmarks::Child(peer).awaitEnd(); }}},
                            std::atoi(argv[1]));
}
