#include "Platform/Foundation/XMLParser.h"

#include "Platform/Foundation/TextEncoding.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <string>

#include <expat.h>

namespace platform {

namespace {

struct ParserDeleter {
    void operator()(XML_Parser parser) const { XML_ParserFree(parser); }
};
using ParserHandle = std::unique_ptr<XML_ParserStruct, ParserDeleter>;

/// One parse of a document in UTF-8.
class Run {
  public:
    Run(std::string_view document, XMLParserDelegate& delegate)
        : document_(document), delegate_(delegate), parser_(XML_ParserCreate("UTF-8")) {
        XML_Parser parser = parser_.get();
        XML_SetUserData(parser, this);
        XML_SetElementHandler(parser, elementStart, elementEnd);
        XML_SetCharacterDataHandler(parser, characters);
        XML_SetCdataSectionHandler(parser, sectionStart, sectionEnd);
        XML_SetAttlistDeclHandler(parser, attributeDeclaration);
        // Setting this, even to nothing, is how expat is told to skip entities that the document declares as it skips
        // those that it may have declared elsewhere.
        XML_SetDefaultHandler(parser, nullptr);
        XML_SetSkippedEntityHandler(parser, skippedEntity);
    }

    /// `isWhole`: whether the document ends where its bytes end.
    bool parse(bool isWhole) {
        // expat counts a piece's bytes by an int; within one piece it copies nothing.
        constexpr std::size_t mostBytesOfPiece = std::size_t{1} << 30U;
        std::string_view rest = document_;
        for (bool isFinal = false; !isFinal;) {
            const std::string_view piece = rest.substr(0, mostBytesOfPiece);
            rest.remove_prefix(piece.size());
            isFinal = rest.empty();
            if (XML_Parse(parser_.get(), piece.data(), static_cast<int>(piece.size()), isFinal && isWhole ? 1 : 0) !=
                XML_STATUS_OK) {
                return false;
            }
        }
        return isWhole;
    }

  private:
    static Run& of(void* self) { return *static_cast<Run*>(self); }

    static void XMLCALL elementStart(void* self, const XML_Char* name, const XML_Char** /*attributes*/) {
        Run& run = of(self);
        if (++run.depth_ > XMLParser::greatestDepth) {
            run.stop();
            return;
        }
        run.delegate_.didStartElement(name);
    }

    static void XMLCALL elementEnd(void* self, const XML_Char* name) {
        Run& run = of(self);
        --run.depth_;
        run.delegate_.didEndElement(name);
    }

    static void XMLCALL characters(void* self, const XML_Char* text, int size) {
        of(self).delegate_.foundCharacters({text, static_cast<std::size_t>(size)});
    }

    // A section is taken from the document as a whole, when its end is known: the document is UTF-8, and no entity is
    // expanded that could hold a section elsewhere.
    static void XMLCALL sectionStart(void* self) {
        Run& run = of(self);
        constexpr std::string_view mark = "<![CDATA[";
        run.sectionBegin_ = run.position() + mark.size();
        XML_SetCharacterDataHandler(run.parser_.get(), nullptr);
    }

    static void XMLCALL sectionEnd(void* self) {
        Run& run = of(self);
        run.reportSection(run.document_.substr(run.sectionBegin_, run.position() - run.sectionBegin_));
        XML_SetCharacterDataHandler(run.parser_.get(), characters);
    }

    static void XMLCALL skippedEntity(void* self, const XML_Char* /*name*/, int isParameterEntity) {
        if (isParameterEntity == 0) {
            of(self).stop();
        }
    }

    static void XMLCALL attributeDeclaration(void* self, const XML_Char* /*element*/, const XML_Char* /*attribute*/,
                                             const XML_Char* /*type*/, const XML_Char* /*value*/, int /*isRequired*/) {
        Run& run = of(self);
        if (++run.declaredAttributes_ > XMLParser::mostDeclaredAttributes) {
            run.stop();
        }
    }

    std::size_t position() const { return static_cast<std::size_t>(XML_GetCurrentByteIndex(parser_.get())); }

    void reportSection(std::string_view section) {
        if (section.find('\r') == std::string_view::npos) {
            delegate_.foundCDATA(section);
            return;
        }
        std::string block;
        block.reserve(section.size());
        for (std::size_t index = 0; index < section.size(); ++index) {
            const bool isBeforeLineFeed = index + 1 < section.size() && section[index + 1] == '\n';
            if (section[index] != '\r') {
                block += section[index];
            } else if (!isBeforeLineFeed) {
                block += '\n';
            }
        }
        delegate_.foundCDATA(block);
    }

    void stop() {
        XML_StopParser(parser_.get(), XML_FALSE);
        // What expat still reports then, such as the end of an element that began and ended at once.
        XML_SetElementHandler(parser_.get(), nullptr, nullptr);
        XML_SetCharacterDataHandler(parser_.get(), nullptr);
        XML_SetCdataSectionHandler(parser_.get(), nullptr, nullptr);
    }

    std::string_view document_;
    XMLParserDelegate& delegate_;
    ParserHandle parser_;
    int depth_ = 0;
    int declaredAttributes_ = 0;
    std::size_t sectionBegin_ = 0;
};

} // namespace

bool XMLParser::parse() {
    // The document outlives this call, so its bytes need no owner.
    const DecodedText decoded = decodedText(Data(nullptr, document_));
    return Run(decoded.text.bytes(), delegate_).parse(decoded.isWhole);
}

} // namespace platform
