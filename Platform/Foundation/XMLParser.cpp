#include "Platform/Foundation/XMLParser.h"

#include "Platform/Foundation/Releaser.h"
#include "Platform/Foundation/TextEncoding.h"

#include <cstddef>
#include <memory>
#include <string>

#include <expat.h>

namespace platform {

namespace {

using ParserHandle = std::unique_ptr<XML_ParserStruct, Releaser<XML_ParserFree>>;

/// One parse of a document in UTF-8.
class Run {
  public:
    explicit Run(XMLParserDelegate& delegate) : delegate_(delegate), parser_(XML_ParserCreate("UTF-8")) {
        XML_Parser parser = parser_.get();
        XML_SetUserData(parser, this);
        XML_SetElementHandler(parser, elementStart, elementEnd);
        XML_SetCharacterDataHandler(parser, characters);
        XML_SetCdataSectionHandler(parser, sectionStart, sectionEnd);
        XML_SetAttlistDeclHandler(parser, attributeDeclaration);
        // Setting this, even to null, makes expat skip the entities that the document declares.
        XML_SetDefaultHandler(parser, nullptr);
        XML_SetSkippedEntityHandler(parser, skippedEntity);
        XML_SetExternalEntityRefHandler(parser, externalEntity);
    }

    /// Returns whether `document` is well-formed up to its end, or so far if it is not `isWhole`.
    bool parse(std::string_view document, bool isWhole) {
        // expat counts bytes by an int.
        constexpr std::size_t maxPiece = std::size_t{1} << 30U;
        do {
            const std::string_view piece = document.substr(0, maxPiece);
            document.remove_prefix(piece.size());
            const int isFinal = document.empty() && isWhole ? 1 : 0;
            if (XML_Parse(parser_.get(), piece.data(), static_cast<int>(piece.size()), isFinal) != XML_STATUS_OK) {
                return false;
            }
        } while (!document.empty());
        return true;
    }

  private:
    static Run& of(void* self) { return *static_cast<Run*>(self); }

    static void XMLCALL elementStart(void* self, const XML_Char* name, const XML_Char** /*attributes*/) {
        Run& run = of(self);
        if (++run.depth_ > XMLParser::maxDepth) {
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
        Run& run = of(self);
        const std::string_view piece(text, static_cast<std::size_t>(size));
        if (run.isInSection_) {
            run.section_ += piece;
        } else {
            run.delegate_.foundCharacters(piece);
        }
    }

    static void XMLCALL sectionStart(void* self) {
        of(self).isInSection_ = true;
        of(self).section_.clear();
    }

    static void XMLCALL sectionEnd(void* self) {
        Run& run = of(self);
        run.isInSection_ = false;
        run.delegate_.foundCDATA(run.section_);
    }

    static void XMLCALL skippedEntity(void* self, const XML_Char* /*name*/, int isParameterEntity) {
        if (isParameterEntity == 0) {
            of(self).stop();
        }
    }

    static int XMLCALL externalEntity(XML_Parser /*parser*/, const XML_Char* /*context*/, const XML_Char* /*base*/,
                                      const XML_Char* /*systemId*/, const XML_Char* /*publicId*/) {
        return XML_STATUS_ERROR;
    }

    static void XMLCALL attributeDeclaration(void* self, const XML_Char* /*element*/, const XML_Char* /*attribute*/,
                                             const XML_Char* /*type*/, const XML_Char* /*value*/, int /*isRequired*/) {
        Run& run = of(self);
        if (++run.declaredAttributes_ > XMLParser::maxDeclaredAttributes) {
            run.stop();
        }
    }

    void stop() {
        XML_StopParser(parser_.get(), XML_FALSE);
        // expat still reports some events, such as the end of an empty element.
        XML_SetElementHandler(parser_.get(), nullptr, nullptr);
        XML_SetCharacterDataHandler(parser_.get(), nullptr);
        XML_SetCdataSectionHandler(parser_.get(), nullptr, nullptr);
    }

    XMLParserDelegate& delegate_;
    ParserHandle parser_;
    int depth_ = 0;
    int declaredAttributes_ = 0;
    bool isInSection_ = false;
    /// The content of the current section so far.
    std::string section_;
};

/// Returns whether expat would read UTF-16, whatever encoding it is given. XML in UTF-8 never has these bytes.
bool looksLikeUtf16(std::string_view text) {
    return text.substr(0, 2).find('\0') != std::string_view::npos || text.starts_with('\xFE') ||
           text.starts_with('\xFF');
}

} // namespace

bool XMLParser::parse() {
    // The document outlives this call.
    const DecodedText decoded = decodedText(Data(nullptr, document_));
    const std::string_view text = decoded.text.bytes();
    return !looksLikeUtf16(text) && Run(delegate_).parse(text, decoded.isWhole) && decoded.isWhole;
}

} // namespace platform
