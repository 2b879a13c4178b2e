// confinement_benchmark ROUNDS EXTENSION KIND [HOME]: starts the extension as the host does, confined and not by turns,
// and prints the median time of each until the timeline of the widget KIND has been answered. With HOME the extension
// takes that folder for the user's home.

#include "Benchmarks/Rounds.h"
#include "Host/Commands/PendingResponse.h"
#include "Host/Connection/Messages.h"

namespace {

using Home = std::optional<std::filesystem::path>;

double secondsToAnswer(const host::Manifest& manifest, const std::string& request, const Home& home,
                       host::Confined confined) {
    const auto start = std::chrono::steady_clock::now();
    const auto extension = host::ExtensionClient::start(manifest, home, confined);
    const auto answer = extension ? host::PendingResponse(**extension, "timeline", request, host::readTimeline).wait()
                                  : platform::Outcome<host::Timeline>(platform::Unexpected{extension.error()});
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
    if (!answer) {
        std::fprintf(stderr, "%s\n", answer.error().message.c_str());
        std::exit(1);
    }
    return taken.count();
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 4) {
        std::fprintf(stderr, "usage: %s ROUNDS EXTENSION KIND [HOME]\n", argv[0]);
        return 64;
    }
    const auto manifest = host::manifestFor(argv[2]);
    if (!manifest) {
        std::fprintf(stderr, "%s\n", manifest.error().message.c_str());
        return 1;
    }
    const std::string request =
        std::string(R"({"kind":")") + argv[3] + R"(","configuration":{},"environment":{"family":"large"}})";
    const Home home = argc > 4 ? Home(argv[4]) : std::nullopt;
    std::vector<double> confined;
    std::vector<double> free;
    for (int round = -2; round < std::atoi(argv[1]); ++round) {
        const double ours = secondsToAnswer(*manifest, request, home, host::Confined::yes);
        const double peer = secondsToAnswer(*manifest, request, home, host::Confined::no);
        if (round >= 0) {
            confined.push_back(ours);
            free.push_back(peer);
        }
    }
    std::printf("{\"ours\": %.9f, \"peer\": %.9f}\n", benchmarks::median(confined), benchmarks::median(free));
}
