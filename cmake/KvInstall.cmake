# What is installed besides programs and libraries: manual pages, completion for bash, what a CMake
# project needs to find the driver; and the Debian package of all of it, which "cpack" makes in a
# release build.
include(CMakePackageConfigHelpers)

foreach(program kvhost kvmodel)
    install(FILES docs/man/${program}.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
    install(FILES scripts/completion/${program}
            DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions)
endforeach()
install(FILES docs/architecture.md docs/formats.md docs/kvhost.md docs/not-bugs.md README.md
        DESTINATION ${CMAKE_INSTALL_DOCDIR})

# find_package(kvui) gives the target kvui::kvui.
set(package ${CMAKE_INSTALL_LIBDIR}/cmake/kvui)
install(EXPORT kvui NAMESPACE kvui:: FILE kvuiTargets.cmake DESTINATION ${package}
        COMPONENT development)
configure_package_config_file(cmake/kvuiConfig.cmake.in
                              ${CMAKE_CURRENT_BINARY_DIR}/kvuiConfig.cmake
                              INSTALL_DESTINATION ${package})
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/kvuiConfigVersion.cmake
                                 COMPATIBILITY SameMinorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/kvuiConfig.cmake
              ${CMAKE_CURRENT_BINARY_DIR}/kvuiConfigVersion.cmake
        DESTINATION ${package} COMPONENT development)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME kvui)
set(CPACK_PACKAGE_CONTACT "KVUI team <kvui@localhost>")
set(CPACK_PACKAGE_DESCRIPTION "The settings half of the KORVA printer driver, with a host that runs
it, a compiler for printer models and two sample printers.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_DEB_COMPONENT_INSTALL OFF)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION graphics)
# SDL is loaded when a window is opened, so that no program names it.
set(CPACK_DEBIAN_PACKAGE_DEPENDS "fonts-dejavu-extra, fonts-noto-cjk, libsdl2-2.0-0")
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_BINARY_DIR}/platform
                                                ${CMAKE_BINARY_DIR}/interface)
set(CPACK_STRIP_FILES ON)
include(CPack)
