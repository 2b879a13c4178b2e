// reading_benchmark favourites|reading-list FILE ROUNDS: our store on such a file, beside libplist parsing the same
// bytes and walking them.

#include "Benchmarks/Rounds.h"

#include "Extension/Favorites/FavoritesStore.h"
#include "Extension/ReadingList/ReadingListStore.h"

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
    bool exists(const std::string& /*path*/) const override { return true; }
    std::optional<platform::FileError> replace(const std::string& /*path*/, std::string_view) const override {
        return platform::FileError{"nothing is written here"};
    }
    std::optional<platform::FileError> replaceUnflushed(const std::string& path,
                                                        std::string_view bytes) const override {
        return replace(path, bytes);
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

template <class Count>
void expectSome(Count count) {
    if (count < 2) {
        std::fprintf(stderr, "nothing was read\n");
        std::exit(1);
    }
}

template <class Store>
void measure(const char* path, int rounds) {
    std::ifstream file(path, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(file), {}};
    const foliovault::FOLIOvaultPaths paths{NoUsers()};
    const OneFile files(path);
    const NoLog log;
    const foliovault::Library library{paths, files, log};
    const Store store(library);
    benchmarks::timeByTurns(
        {
            {"everyRecord", [&] { expectSome(store.readFromPlist().size()); }},
            {"libplist",
             [&] {
                 plist_t root = nullptr;
                 const auto parse = bytes.starts_with("bplist") ? plist_from_bin : plist_from_xml;
                 parse(bytes.data(), static_cast<std::uint32_t>(bytes.size()), &root);
                 expectSome(nodesBelow(root));
                 plist_free(root);
             }},
        },
        rounds);
}

} // namespace

int main(int argc, char** argv) {
    const std::string_view list = argc == 4 ? argv[1] : "";
    if (list == "favourites") {
        measure<foliovault::FavoritesStore>(argv[2], std::atoi(argv[3]));
    } else if (list == "reading-list") {
        measure<foliovault::ReadingListStore>(argv[2], std::atoi(argv[3]));
    } else {
        std::fprintf(stderr, "usage: reading_benchmark favourites|reading-list FILE ROUNDS\n");
        return 64;
    }
}
