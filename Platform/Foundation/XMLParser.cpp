#include "Platform/Foundation/XMLParser.h"

#include "Platform/Foundation/TextEncoding.h"
#include "Platform/Foundation/XMLCharacters.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <string>

#include <expat.h>

namespace platform {

namespace {

struct ParserDeleter {
    void operator()(XML_Parser parser) const { XML_ParserFree(parser); }
};
using ParserHandle = std::unique_ptr<XML_ParserStruct, ParserDeleter>;

std::string withLineFeeds(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    for (std::size_t index = 0; index < text.size(); ++index) {
        if (text[index] != '\r') {
            result += text[index];
        } else if (!text.substr(index + 1).starts_with('\n')) {
            result += '\n';
        }
    }
    return result;
}

/// One parse of a document in UTF-8.
///
/// A CDATA section is where the markup of a feed is, and most of its bytes: it is passed over by a search for its end,
/// and expat is given what stands before and after. expat tells whether what looks like a section's beginning is one.
class Run {
  public:
    explicit Run(XMLParserDelegate& delegate) : delegate_(delegate), parser_(XML_ParserCreate("UTF-8")) {
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
        XML_SetExternalEntityRefHandler(parser, externalEntity);
    }

    /// Whether `document` is well-formed up to its end, or as far as it goes where that `isWhole` not.
    bool parse(std::string_view document, bool isWhole) {
        constexpr std::string_view opening = "<![CDATA[";
        constexpr std::string_view closing = "]]>";
        // Below this, a piece more for expat costs more than it saves.
        constexpr std::size_t leastWorthPassingOver = 256;
        std::size_t mark = 0;
        while ((mark = document.find(opening, mark)) != std::string_view::npos) {
            const std::size_t begin = mark + opening.size();
            const std::size_t end = document.find(closing, begin);
            if (end == std::string_view::npos) {
                break;
            }
            if (end - begin < leastWorthPassingOver) {
                mark = end;
                continue;
            }
            if (!feed(document.substr(0, begin), IsLast::no)) {
                return false;
            }
            section_ = document.substr(begin, end - begin);
            if (!isInSection_) {
                // It stands in a comment or the like, as very many more may. expat reads such from its beginning again
                // with every piece that does not end it, so the rest is one piece.
                section_.reset();
                document.remove_prefix(begin);
                break;
            }
            if (!isXmlText(*section_)) {
                return false;
            }
            document.remove_prefix(end);
            mark = 0;
        }
        return feed(document, isWhole ? IsLast::yes : IsLast::no);
    }

  private:
    enum class IsLast : bool { no, yes };

    bool feed(std::string_view bytes, IsLast isLast) {
        // expat counts a piece's bytes by an int.
        constexpr std::size_t mostBytesOfPiece = std::size_t{1} << 30U;
        do {
            const std::string_view piece = bytes.substr(0, mostBytesOfPiece);
            bytes.remove_prefix(piece.size());
            const int isFinal = bytes.empty() && isLast == IsLast::yes ? 1 : 0;
            if (XML_Parse(parser_.get(), piece.data(), static_cast<int>(piece.size()), isFinal) != XML_STATUS_OK) {
                return false;
            }
        } while (!bytes.empty());
        return true;
    }

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
        Run& run = of(self);
        const std::string_view piece(text, static_cast<std::size_t>(size));
        if (run.isInSection_) {
            run.gathered_ += piece;
        } else {
            run.delegate_.foundCharacters(piece);
        }
    }

    static void XMLCALL sectionStart(void* self) {
        of(self).isInSection_ = true;
        of(self).gathered_.clear();
    }

    static void XMLCALL sectionEnd(void* self) {
        Run& run = of(self);
        run.isInSection_ = false;
        if (run.section_ && run.section_->find('\r') != std::string_view::npos) {
            run.gathered_ = withLineFeeds(*run.section_);
            run.section_.reset();
        }
        run.delegate_.foundCDATA(run.section_.value_or(run.gathered_));
        run.section_.reset();
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
        if (++run.declaredAttributes_ > XMLParser::mostDeclaredAttributes) {
            run.stop();
        }
    }

    void stop() {
        XML_StopParser(parser_.get(), XML_FALSE);
        // What expat still reports then, such as the end of an element that began and ended at once.
        XML_SetElementHandler(parser_.get(), nullptr, nullptr);
        XML_SetCharacterDataHandler(parser_.get(), nullptr);
        XML_SetCdataSectionHandler(parser_.get(), nullptr, nullptr);
    }

    XMLParserDelegate& delegate_;
    ParserHandle parser_;
    int depth_ = 0;
    int declaredAttributes_ = 0;
    bool isInSection_ = false;
    /// The section that was passed over, until it is reported at its end.
    std::optional<std::string_view> section_;
    /// What expat found in a section that was not.
    std::string gathered_;
};

/// What expat takes for UTF-16, whatever it is told. XML holds no such bytes in UTF-8.
bool looksLikeUtf16(std::string_view text) {
    return text.substr(0, 2).find('\0') != std::string_view::npos || text.starts_with('\xFE') ||
           text.starts_with('\xFF');
}

} // namespace

bool XMLParser::parse() {
    // The document outlives this call, so its bytes need no owner.
    const DecodedText decoded = decodedText(Data(nullptr, document_));
    const std::string_view text = decoded.text.bytes();
    return !looksLikeUtf16(text) && Run(delegate_).parse(text, decoded.isWhole) && decoded.isWhole;
}

} // namespace platform
