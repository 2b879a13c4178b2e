# A Debian package of the installation, by `cpack -G DEB` in the build folder; scripts/package has what that takes.
set(FOLIOVAULT_CONTACT "FOLIOvault Widgets <widgets@foliovault.example>" CACHE STRING "Who answers for the package")

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME foliovault-widgets)
set(CPACK_PACKAGE_CONTACT ${FOLIOVAULT_CONTACT})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "desktop widgets of FOLIOvault and a host that shows them")
set(CPACK_PACKAGE_DESCRIPTION
"The widgets show the reading list, favorites and workspaces of FOLIOvault, a
document-management application, and a tip, each in four sizes.
.
The widget host shows the widgets of any extension that speaks its protocol,
on the desktop or as pictures. It confines extensions to what they say they
need, starts them when there is something to show and ends them afterwards.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_CONTROL_EXTRA ${PROJECT_SOURCE_DIR}/Resources/Package/conffiles)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION TRUE)

# What the programs are linked with is found out when they are packed; what they look up besides stands with the project's packages.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
foreach(relation depends recommends)
    set(list run_packages)
    if(relation STREQUAL recommends)
        set(list recommended_packages)
    endif()
    execute_process(
        COMMAND bash -c "source scripts/packages.sh && IFS=, && echo \"\${${list}[*]}\""
        WORKING_DIRECTORY ${PROJECT_SOURCE_DIR} OUTPUT_VARIABLE names OUTPUT_STRIP_TRAILING_WHITESPACE
        COMMAND_ERROR_IS_FATAL ANY)
    string(TOUPPER ${relation} relation)
    string(REPLACE "," ", " CPACK_DEBIAN_PACKAGE_${relation} "${names}")
endforeach()
# What they load at first need belongs to the packages that own it here.
set(owners "")
foreach(library icuuc icui18n curl)
    find_library(${library}_file ${library} REQUIRED NO_CACHE)
    file(REAL_PATH ${${library}_file} file)
    execute_process(COMMAND dpkg-query --search ${file} OUTPUT_VARIABLE owner ERROR_QUIET)
    string(REGEX MATCH "^[^:]+" owner "${owner}")
    list(APPEND owners ${owner})
endforeach()
list(REMOVE_DUPLICATES owners)
list(JOIN owners ", " owners)
string(APPEND CPACK_DEBIAN_PACKAGE_DEPENDS ", ${owners}")

execute_process(
    COMMAND date --utc --date=${FOLIOVAULT_RELEASE_DATE} -R
    OUTPUT_VARIABLE FOLIOVAULT_RELEASE_RFC OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
configure_file(${PROJECT_SOURCE_DIR}/Resources/Package/changelog.in ${PROJECT_BINARY_DIR}/install/changelog.Debian @ONLY)
configure_file(${PROJECT_SOURCE_DIR}/cmake/PreparePackage.cmake.in ${PROJECT_BINARY_DIR}/install/PreparePackage.cmake @ONLY)
set(CPACK_PRE_BUILD_SCRIPTS ${PROJECT_BINARY_DIR}/install/PreparePackage.cmake)
include(CPack)
