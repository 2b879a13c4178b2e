// reading_benchmark FILE ROUNDS: our stores on a favourites file, beside libplist parsing the same bytes and walking
// them.

#include "Benchmarks/Rounds.h"

#include "Extension/Favorites/FavoritesStore.h"
#include "Extension/Shared/DisplayableItem.h"

#include <plist/plist.h>

#include <cstdlib>
#include <fstream>
#include <iterator>

namespace {

/// The one file there is, whatever path is asked for.
class OneFile final : public platform::FileSystem {
  public:
    explicit OneFile(std::string path) : path_(std::move(path)) {}
    std::optional<platform::Data> read(const std::string& /*path*/) const override {
        return platform::DiskFileSystem::shared().read(path_);
    }

  private:
    std::string path_;
};

class NoUsers final : public platform::UserDatabase {
  public:
    std::optional<std::string> recordedHome() const override { return std::nullopt; }
    std::string processHome() const override { return "/"; }
};

class NoLog final : public platform::Log {
  public:
    void write(platform::LogLevel, std::string_view, std::string_view) const override {}
};

std::size_t nodesBelow(plist_t node) {
    std::size_t count = 1;
    if (plist_get_node_type(node) == PLIST_ARRAY) {
        plist_array_iter iterator = nullptr;
        plist_array_new_iter(node, &iterator);
        for (plist_t item = nullptr; plist_array_next_item(node, iterator, &item), item != nullptr;) {
            count += nodesBelow(item);
        }
        std::free(iterator);
    } else if (plist_get_node_type(node) == PLIST_DICT) {
        plist_dict_iter iterator = nullptr;
        plist_dict_new_iter(node, &iterator);
        for (plist_t item = nullptr; plist_dict_next_item(node, iterator, nullptr, &item), item != nullptr;) {
            count += nodesBelow(item);
        }
        std::free(iterator);
    }
    return count;
}

void expectSome(std::size_t count) {
    if (count < 2) {
        std::fprintf(stderr, "nothing was read\n");
        std::exit(1);
    }
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fprintf(stderr, "usage: reading_benchmark FILE ROUNDS\n");
        return 64;
    }
    std::ifstream file(argv[1], std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(file), {}};
    const foliovault::FOLIOvaultPaths paths{NoUsers()};
    const OneFile files(argv[1]);
    const NoLog log;
    const foliovault::FavoritesStore store(paths, files, log);
    benchmarks::timeByTurns(
        {
            {"everyRecord", [&] { expectSome(store.readFromPlist().size()); }},
            {"timelineNeeds",
             [&] {
                 const auto all = [](const auto&) { return true; };
                 expectSome(static_cast<std::size_t>(store.readExcerpt(all, foliovault::listEntryItemCap).count));
             }},
            {"libplist",
             [&] {
                 plist_t root = nullptr;
                 plist_from_memory(bytes.data(), static_cast<std::uint32_t>(bytes.size()), &root);
                 expectSome(nodesBelow(root));
                 plist_free(root);
             }},
        },
        std::atoi(argv[2]));
}
