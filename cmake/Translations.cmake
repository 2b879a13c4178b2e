# foliovault_translations(DOMAIN): compiles Resources/Translations/LANGUAGE/DOMAIN.po of every language into
# share/locale beside bin, where both programs look for it, in the build tree and when installed.
find_program(MSGFMT msgfmt REQUIRED)

function(foliovault_translations domain)
    file(GLOB files CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/Resources/Translations/*/${domain}.po)
    set(catalogs)
    foreach(file ${files})
        get_filename_component(folder ${file} DIRECTORY)
        get_filename_component(language ${folder} NAME)
        set(catalog ${PROJECT_BINARY_DIR}/share/locale/${language}/LC_MESSAGES/${domain}.mo)
        get_filename_component(catalogFolder ${catalog} DIRECTORY)
        add_custom_command(
            OUTPUT ${catalog}
            COMMAND ${CMAKE_COMMAND} -E make_directory ${catalogFolder}
            COMMAND ${MSGFMT} --check --endianness=little --no-hash -o ${catalog} ${file}
            DEPENDS ${file}
            VERBATIM)
        list(APPEND catalogs ${catalog})
        install(FILES ${catalog} DESTINATION ${CMAKE_INSTALL_LOCALEDIR}/${language}/LC_MESSAGES)
    endforeach()
    add_custom_target(translations-${domain} ALL DEPENDS ${catalogs})
endfunction()
