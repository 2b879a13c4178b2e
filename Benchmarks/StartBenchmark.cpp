// start_benchmark ROUNDS REQUEST[\nREQUEST] COMMAND… -- COMMAND…: starts two programs by turns and times them. The
// first gets the first line of the request and counts until it has answered a line; so does the second with the second
// line, or without one it counts until it has ended.

#include "Benchmarks/Child.h"
#include "Benchmarks/Rounds.h"

int main(int argc, char** argv) {
    const auto [ours, peer] = benchmarks::twoCommands(argc, argv, 3);
    const std::string requests = argv[2];
    const std::size_t lineEnd = std::min(requests.find('\n'), requests.size());
    const std::string first = requests.substr(0, lineEnd) + "\n";
    const std::string second = requests.substr(std::min(lineEnd + 1, requests.size())) + "\n";
    const bool peerAnswers = lineEnd < requests.size();
    benchmarks::timeByTurns({{"ours", [&, ours = ours] { benchmarks::Child(ours, first).awaitLine(); }},
                             {"peer",
                              [&, peer = peer] {
                                  if (peerAnswers) {
                                      benchmarks::Child(peer, second).awaitLine();
                                  } else {
                                      benchmarks::Child(peer).awaitEnd();
                                  }
                              }}},
                            std::atoi(argv[1]));
}
