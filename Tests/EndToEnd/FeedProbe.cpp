// feed_probe FILE…: the tips of each feed as a line of JSON, for feed_test.py.

#include "Extension/Tips/RSSParser.h"
#include "Platform/Foundation/FileSystem.h"
#include "Platform/Foundation/JsonWriter.h"

#include <cstdio>

int main(int argc, char** argv) {
    for (int index = 1; index < argc; ++index) {
        const auto file = platform::DiskFileSystem::shared().read(argv[index]);
        if (!file) {
            std::fprintf(stderr, "feed_probe: cannot read %s\n", argv[index]);
            return 1;
        }
        std::string line;
        platform::JsonWriter json(line);
        json.beginArray();
        for (const foliovault::TipItem& tip : foliovault::RSSParser::parseTips(file->bytes())) {
            json.beginObject()
                .member("title", tip.title)
                .member("description", tip.description)
                .member("link", tip.link)
                .key("pubDate")
                .number(tip.pubDate.unixTime())
                .member("guid", tip.guid)
                .endObject();
        }
        json.endArray();
        std::puts(line.c_str());
    }
}
