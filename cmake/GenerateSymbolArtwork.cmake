# Run with cmake -P: writes the path data of every FOLDER/NAME.svg into OUTPUT, in the order of the names' bytes.
file(GLOB drawings RELATIVE ${FOLDER} ${FOLDER}/*.svg)
list(SORT drawings COMPARE STRING)

set(names)
foreach(drawing IN LISTS drawings)
    string(REGEX REPLACE "\\.svg$" "" name ${drawing})
    list(APPEND names ${name})
endforeach()
# Without the ending: "doc" stands before "doc.text".
list(SORT names COMPARE STRING)

set(rows "")
list(LENGTH names count)
foreach(name IN LISTS names)
    file(READ ${FOLDER}/${name}.svg svg)
    if(NOT svg MATCHES "viewBox=\"0 0 24 24\"" OR svg MATCHES "<(circle|ellipse|rect|line|poly|g|use|text)[ />]")
        message(FATAL_ERROR "${name}.svg: only <path> elements on a grid of 24 units are understood")
    endif()
    string(REGEX MATCHALL "<path d=\"[^\"]*\"" paths "${svg}")
    set(data "")
    foreach(path IN LISTS paths)
        string(REGEX REPLACE "^<path d=\"([^\"]*)\"$" "\\1" path "${path}")
        string(APPEND data "\n     \"${path} \"")
    endforeach()
    if(data STREQUAL "")
        message(FATAL_ERROR "${name}.svg: no <path d=\"…\"> found")
    endif()
    string(APPEND rows "    {\"${name}\",${data}},\n")
endforeach()

file(WRITE ${OUTPUT}
"// Generated from Resources/Symbols; change the drawings there.
#include \"Host/Drawing/SymbolArtwork.h\"

#include <array>

namespace host {
namespace {

constexpr std::array<SymbolArtwork, ${count}> artwork{{
${rows}}};

} // namespace

std::span<const SymbolArtwork> symbolArtwork() { return artwork; }

} // namespace host
")
