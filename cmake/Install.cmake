# What an installation has besides the programs, their manifest and their translations: how a desktop finds and starts the
# host, its pages of the manual and the completions of its command line.
set(FOLIOVAULT_RELEASE_DATE 2026-11-23 CACHE STRING "The day of this version, in the forms that metadata and the manual want")
string(REGEX MATCH "^([0-9]+)-([0-9]+)-([0-9]+)$" ignored ${FOLIOVAULT_RELEASE_DATE})
set(months January February March April May June July August September October November December)
math(EXPR month "${CMAKE_MATCH_2} - 1")
list(GET months ${month} month)
set(FOLIOVAULT_RELEASE_DAY "${month} ${CMAKE_MATCH_3}, ${CMAKE_MATCH_1}")

set(name net.foliovault.WidgetHost)
set(desktop ${PROJECT_SOURCE_DIR}/Resources/Desktop)
set(made ${PROJECT_BINARY_DIR}/install)
configure_file(${desktop}/${name}.metainfo.xml.in ${made}/${name}.metainfo.xml @ONLY)
install(FILES ${made}/${name}.metainfo.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
install(FILES ${desktop}/${name}.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES ${desktop}/${name}.svg DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
install(FILES ${desktop}/autostart.desktop DESTINATION ${CMAKE_INSTALL_SYSCONFDIR}/xdg/autostart RENAME ${name}.desktop)

# Enabled by default: a session that systemd manages starts it.
set(units lib/systemd/user)
set(wanted ${made}/graphical-session.target.wants)
file(MAKE_DIRECTORY ${wanted})
file(CREATE_LINK ../widgethost.service ${wanted}/widgethost.service SYMBOLIC)
install(FILES ${desktop}/widgethost.service DESTINATION ${units})
install(FILES ${wanted}/widgethost.service DESTINATION ${units}/graphical-session.target.wants)

foreach(page widgethost.1 foliovault-widgets.1 widgethost-extension.5)
    string(REGEX REPLACE ".*\\." "" section ${page})
    configure_file(${PROJECT_SOURCE_DIR}/Resources/Manual/${page}.in ${made}/${page} @ONLY)
    install(FILES ${made}/${page} DESTINATION ${CMAKE_INSTALL_MANDIR}/man${section})
endforeach()

set(completions ${PROJECT_SOURCE_DIR}/Resources/Completions)
install(FILES ${completions}/widgethost.bash DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions RENAME widgethost)
install(FILES ${completions}/_widgethost DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/site-functions)
install(FILES ${completions}/widgethost.fish DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d)

set(documentation ${PROJECT_SOURCE_DIR}/Documentation)
set(documents ${CMAKE_INSTALL_DATADIR}/doc/foliovault-widgets)
foreach(page protocol extensions layout)
    install(FILES ${documentation}/${page}.md DESTINATION ${documents})
endforeach()
install(PROGRAMS ${documentation}/examples/notes DESTINATION ${documents}/examples)
install(FILES ${documentation}/examples/notes.json DESTINATION ${documents}/examples)
