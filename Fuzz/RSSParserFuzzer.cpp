// Reads any bytes as a feed. Checks its tips, and compares the XML parser with a plain use of expat.

#include "Extension/Tips/RSSParser.h"
#include "Platform/Foundation/TextEncoding.h"
#include "Platform/Foundation/WhiteSpace.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include <expat.h>

namespace {

using foliovault::TipItem;
using platform::Data;
using platform::XMLParser;

void require(bool condition, const char* what) {
    if (!condition) {
        std::fprintf(stderr, "%s\n", what);
        std::abort();
    }
}

/// The events of a parse as one text.
class Report final : public platform::XMLParserDelegate {
  public:
    void didStartElement(std::string_view name) override { add("\n<", name); }
    void didEndElement(std::string_view name) override { add("\n/", name); }
    void foundCharacters(std::string_view characters) override { add("", characters); }
    void foundCDATA(std::string_view block) override {
        add("\n[", block);
        add("\n]", "");
    }

    std::string text;

  private:
    void add(std::string_view mark, std::string_view content) { text.append(mark).append(content); }
};

/// The same by expat.
class PlainParse {
  public:
    explicit PlainParse(std::string_view document) {
        XML_Parser parser = XML_ParserCreate("UTF-8");
        XML_SetUserData(parser, this);
        XML_SetElementHandler(
            parser, [](void* self, const char* name, const char**) { report(self).didStartElement(name); },
            [](void* self, const char* name) { report(self).didEndElement(name); });
        XML_SetCharacterDataHandler(parser, [](void* self, const char* text, int size) {
            auto& parse = *static_cast<PlainParse*>(self);
            const std::string_view piece(text, static_cast<std::size_t>(size));
            if (parse.isInSection_) {
                parse.section_ += piece;
            } else {
                parse.report_.foundCharacters(piece);
            }
        });
        XML_SetCdataSectionHandler(
            parser,
            [](void* self) {
                static_cast<PlainParse*>(self)->section_.clear();
                static_cast<PlainParse*>(self)->isInSection_ = true;
            },
            [](void* self) {
                static_cast<PlainParse*>(self)->isInSection_ = false;
                report(self).foundCDATA(static_cast<PlainParse*>(self)->section_);
            });
        isGood = XML_Parse(parser, document.data(), static_cast<int>(document.size()), 1) == XML_STATUS_OK;
        XML_ParserFree(parser);
    }

    const std::string& text() const { return report_.text; }
    bool isGood = false;

  private:
    static Report& report(void* self) { return static_cast<PlainParse*>(self)->report_; }

    Report report_;
    bool isInSection_ = false;
    std::string section_;
};

void requireSameReport(std::string_view document) {
    Report report;
    const bool isGood = XMLParser(document, report).parse();
    const auto decoded = platform::decodedText(Data(nullptr, document));
    // The two differ if a document declares entities, or is UTF-16 without a mark and a declaration.
    const std::string_view text = decoded.text.bytes();
    const bool isUtf16 = text.substr(0, 2).find_first_of(std::string_view("\0\xFE\xFF", 3)) != std::string_view::npos;
    require(!isUtf16 || report.text.empty(), "reads other bytes as UTF-16");
    if (isUtf16 || !decoded.isWhole || text.find("<!DOCTYPE") != std::string_view::npos) {
        return;
    }
    const PlainParse plain(text);
    require(report.text == plain.text() && isGood == plain.isGood, "reports something else than expat");
}

void requireValid(const std::vector<TipItem>& tips) {
    for (std::size_t index = 0; index < tips.size(); ++index) {
        const TipItem& tip = tips[index];
        require(index == 0 || tips[index - 1].pubDate >= tip.pubDate, "is not sorted");
        require(tip.pubDate != platform::Date::distantPast(), "has no date");
        require(!tip.title.empty() && platform::trimmed(tip.title) == tip.title, "has a bad title");
        require(platform::trimmed(tip.description) == tip.description, "has a bad description");
        require(tip.link.empty() || !tip.guid.empty(), "has no identifier");
        static_cast<void>(tip.url());
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    const std::string document(reinterpret_cast<const char*>(bytes), size);
    requireSameReport(document);
    requireValid(foliovault::RSSParser::parseTips(document));
    return 0;
}
