# foliovault_symbols(OUTPUT_VARIABLE): a source file with the path data of every Resources/Symbols/NAME.svg, for
# Host/Drawing/SymbolArtwork.h; made anew when a symbol comes, goes or changes.
#
# The drawings hold nothing but <path d="…"/> elements, strokes on a grid of 24 units.
set(FOLIOVAULT_SYMBOLS_SCRIPT ${CMAKE_CURRENT_LIST_DIR}/GenerateSymbolArtwork.cmake)

function(foliovault_symbols outputVariable)
    set(folder ${PROJECT_SOURCE_DIR}/Resources/Symbols)
    set(output ${PROJECT_BINARY_DIR}/generated/Host/Drawing/SymbolArtwork.cpp)
    file(GLOB drawings CONFIGURE_DEPENDS ${folder}/*.svg)
    # Its content changes with the list of files, so that a symbol taken away is noticed too.
    file(CONFIGURE OUTPUT ${output}.list CONTENT "${drawings}\n")
    add_custom_command(
        OUTPUT ${output}
        COMMAND ${CMAKE_COMMAND} -DFOLDER=${folder} -DOUTPUT=${output} -P ${FOLIOVAULT_SYMBOLS_SCRIPT}
        DEPENDS ${drawings} ${output}.list ${FOLIOVAULT_SYMBOLS_SCRIPT}
        COMMENT "Generating the symbols' artwork"
        VERBATIM)
    set(${outputVariable} ${output} PARENT_SCOPE)
endfunction()
