// reload_benchmark ROUNDS EXTENSION HOME: a session reloads four large tiles by an extension that it starts for that,
// down to what is to be drawn of each, beside Python starting to do nothing. HOME is the folder that the extension
// takes for the user's home.

#include "Benchmarks/Child.h"
#include "Benchmarks/Rounds.h"
#include "Host/Drawing/Renderer.h"
#include "Host/Layout/Measures.h"
#include "Host/Session/Session.h"

namespace {

/// Keeps of each tile what is to be drawn.
class DisplayLists final : public host::SessionObserver {
  public:
    explicit DisplayLists(host::Renderer& renderer) : renderer_(renderer) {}
    void tileUpdated(const host::Tile& tile, host::TileUpdate update) override {
        if (update == host::TileUpdate::status) {
            return;
        }
        lists_.insert_or_assign(tile.instance().id,
                                host::layOut(tile.entry()->view, host::familySize(tile.instance().family),
                                             renderer_.texts(), renderer_.images()));
    }
    std::size_t count() const { return lists_.size(); }

  private:
    host::Renderer& renderer_;
    std::map<host::InstanceId, host::WidgetLayout> lists_;
};

/// The session is returned, since a desktop's goes on.
std::unique_ptr<host::Session> reload(const host::Manifest& manifest, const std::filesystem::path& home,
                                      DisplayLists& lists) {
    auto made = std::make_unique<host::Session>(
        host::Session::Dependencies{.findManifest = [manifest](const std::string& /*identifier*/) { return manifest; },
                                    .startExtension =
                                        [home](const host::Manifest& found) {
                                            return host::ExtensionClient::start(found, home, host::Confined::yes);
                                        },
                                    .clock = platform::SystemClock::shared(),
                                    .observer = lists,
                                    .home = home,
                                    .warn = nullptr});
    host::Session& session = *made;
    std::vector<host::Instance> instances;
    for (const char* kind : {"ReadingListWidget", "FavoritesWidget", "WorkspacesWidget", "TipsWidget"}) {
        instances.push_back({.id = static_cast<host::InstanceId>(instances.size() + 1),
                             .extension = manifest.identifier,
                             .kind = kind,
                             .family = "large"});
    }
    session.setTiles(instances);
    while (lists.count() < instances.size()) {
        g_main_context_iteration(nullptr, TRUE);
        for (const auto& [id, tile] : session.tiles()) {
            if (tile.history().lastFailure) {
                std::fprintf(stderr, "%s\n", tile.history().lastFailure->message.c_str());
                std::exit(1);
            }
        }
    }
    return made;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 4) {
        std::fprintf(stderr, "usage: reload_benchmark ROUNDS EXTENSION HOME\n");
        return 64;
    }
    const auto manifest = host::manifestFor(argv[2]);
    if (!manifest) {
        std::fprintf(stderr, "%s\n", manifest.error().message.c_str());
        return 1;
    }
    // Made in the worker, like the fonts that it reads in a thread.
    std::optional<host::Renderer> renderer;
    std::optional<DisplayLists> lists;
    std::unique_ptr<host::Session> session;
    benchmarks::timeByTurns({{"ours",
                              [&] {
                                  if (!renderer) {
                                      renderer.emplace();
                                  }
                                  lists.emplace(*renderer);
                                  session = reload(*manifest, argv[3], *lists);
                              },
                              [&] { session.reset(); }},
                             {"python",
                              [] {
                                  benchmarks::Child({"/usr/bin/python3", "-c", "pass"}).awaitEnd();
                              }}},
                            std::atoi(argv[1]));
}
