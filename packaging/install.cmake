# What "cmake --install" installs, in three components: jukebox (the only one that is installed without --component),
# demo and kiosk. The Debian packages contain one component each.
option(VANTORIX_LINK_FONTS "Install the themes' fonts as links into the system's font folders, without copying them" OFF)
set(CMAKE_INSTALL_DOCDIR ${CMAKE_INSTALL_DATAROOTDIR}/doc/vantorix-jukebox)
set(CMAKE_INSTALL_DEFAULT_COMPONENT_NAME jukebox)
set(PACKAGING ${CMAKE_CURRENT_LIST_DIR})

install(TARGETS vantorix vantorix-console vantorix-leds RUNTIME)
install(DIRECTORY home/ DESTINATION ${CMAKE_INSTALL_DATADIR}/vantorix PATTERN .gitkeep EXCLUDE)
install(FILES docs/man/vantorix.1 docs/man/vantorix-console.1 docs/man/vantorix-leds.1
        DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
install(FILES ${PACKAGING}/desktop/vantorix.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES ${PACKAGING}/desktop/localhost.vantorix.jukebox.metainfo.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
install(FILES ${PACKAGING}/desktop/vantorix.svg DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
foreach(size 16 24 32 48 64 128 256 512)
    install(FILES ${PACKAGING}/desktop/vantorix-${size}.png RENAME vantorix.png
            DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/${size}x${size}/apps)
endforeach()
install(FILES ${PACKAGING}/completion/vantorix ${PACKAGING}/completion/vantorix-console
        ${PACKAGING}/completion/vantorix-leds DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions)
# The links between the pages work in the installed folder as well.
install(FILES README.md CHANGELOG.md CONTRIBUTING.md LICENSE DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(DIRECTORY docs/ DESTINATION ${CMAKE_INSTALL_DOCDIR}/docs PATTERN man EXCLUDE)

# The fonts of the delivered themes are those of packages of the system, or made of them; tools/theme_fonts.txt lists them.
find_package(Python3 REQUIRED COMPONENTS Interpreter)
file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/fonts)
file(STRINGS tools/theme_fonts.txt THEME_FONTS REGEX "^[a-z]")
foreach(row ${THEME_FONTS})
    string(REPLACE " " ";" row "${row}")
    list(GET row 0 theme)
    list(GET row 1 font)
    # The last part is the name of the font of the titles, or the file of the package.
    list(GET row -1 titles)
    get_filename_component(name ${titles} NAME)
    set(theme ${CMAKE_INSTALL_DATADIR}/vantorix/themes/${theme})
    set(made ${CMAKE_BINARY_DIR}/fonts/${name})
    if(VANTORIX_LINK_FONTS AND titles STREQUAL font)
        file(CREATE_LINK ${font} ${made} SYMBOLIC)
        install(FILES ${made} DESTINATION ${theme})
    elseif(NOT EXISTS ${font})
        message(STATUS "${font} is missing: the theme will use another font")
    elseif(titles STREQUAL font)
        install(FILES ${font} DESTINATION ${theme})
    else()
        execute_process(COMMAND ${Python3_EXECUTABLE} tools/make_title_font.py ${font} ${made}
                        WORKING_DIRECTORY ${CMAKE_CURRENT_SOURCE_DIR} COMMAND_ERROR_IS_FATAL ANY)
        install(FILES ${made} DESTINATION ${theme})
    endif()
endforeach()

install(DIRECTORY demo/ DESTINATION ${CMAKE_INSTALL_DATADIR}/vantorix-demo COMPONENT demo EXCLUDE_FROM_ALL)

# systemd and udev read these folders, whatever the prefix is.
set(KIOSK ${PACKAGING}/kiosk)
macro(install_kiosk kind destination)
    install(${kind} ${ARGN} DESTINATION ${destination} COMPONENT kiosk EXCLUDE_FROM_ALL)
endmacro()
install_kiosk(PROGRAMS ${CMAKE_INSTALL_BINDIR} ${KIOSK}/vantorix-kiosk)
install_kiosk(PROGRAMS lib/vantorix ${KIOSK}/kiosk-screen ${KIOSK}/kiosk-session ${KIOSK}/kiosk-wait-for-music)
install_kiosk(FILES /lib/systemd/system ${KIOSK}/vantorix-kiosk.service ${KIOSK}/vantorix-kiosk-screen.service
              ${KIOSK}/vantorix-kiosk-music.service)
install_kiosk(FILES /lib/udev/rules.d ${KIOSK}/70-vantorix-kiosk.rules)
install_kiosk(FILES lib/sysusers.d ${KIOSK}/vantorix-kiosk.conf)
install_kiosk(FILES /etc/vantorix ${KIOSK}/screen)
install_kiosk(FILES ${CMAKE_INSTALL_MANDIR}/man1 docs/man/vantorix-kiosk.1)
install_kiosk(FILES ${CMAKE_INSTALL_DATADIR}/bash-completion/completions ${PACKAGING}/completion/vantorix-kiosk)
