# Compiler and linker settings of all targets.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
if(NOT CMAKE_BUILD_TYPE)
    set(CMAKE_BUILD_TYPE Release)
endif()
set(CMAKE_CXX_FLAGS_RELEASE "-O2 -DNDEBUG")

add_library(foliovault_settings INTERFACE)
target_include_directories(foliovault_settings INTERFACE ${PROJECT_SOURCE_DIR} ${PROJECT_BINARY_DIR}/generated)
target_compile_options(foliovault_settings INTERFACE
    -Wall -Wextra -Wpedantic -Wconversion
    -ffunction-sections -fdata-sections)
# Designated initialisers may leave members at their defaults.
target_compile_options(foliovault_settings INTERFACE -Wno-missing-field-initializers)
if(CMAKE_CXX_COMPILER_ID STREQUAL GNU)
    # GCC 12 takes the alternatives that a moved variant does not hold for members that are read uninitialised.
    target_compile_options(foliovault_settings INTERFACE -Wno-maybe-uninitialized)
endif()
target_link_options(foliovault_settings INTERFACE -Wl,--gc-sections -Wl,--as-needed -Wl,-O1)

if(FOLIOVAULT_SANITIZE)
    target_compile_options(foliovault_settings INTERFACE
        -fsanitize=${FOLIOVAULT_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(foliovault_settings INTERFACE -fsanitize=${FOLIOVAULT_SANITIZE})
endif()
if(FOLIOVAULT_FUZZ)
    target_compile_options(foliovault_settings INTERFACE -fsanitize=fuzzer-no-link)
endif()

# foliovault_library(NAME SOURCES… [PUBLIC LIBRARIES…] [PRIVATE LIBRARIES…]): one static library for one folder.
function(foliovault_library name)
    cmake_parse_arguments(ARG "" "" "SOURCES;PUBLIC;PRIVATE" ${ARGN})
    add_library(${name} STATIC ${ARG_SOURCES})
    target_link_libraries(${name} PUBLIC foliovault_settings ${ARG_PUBLIC} PRIVATE ${ARG_PRIVATE})
endfunction()
