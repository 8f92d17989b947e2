# Installing the program as a desktop program (cmake --install): the binary, a .desktop entry,
# its icon and a man page; and its Debian package (cpack in the build folder), with the
# libraries it links found by dpkg-shlibdeps and the run-time parts Qt loads by name declared.
include(GNUInstallDirs)

target_compile_definitions(ivacompras PRIVATE IVC_VERSION="${PROJECT_VERSION}")
install(TARGETS ivacompras RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(FILES packaging/ivacompras.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES packaging/ivacompras.svg DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)

set(IVC_VERSION ${PROJECT_VERSION})
configure_file(packaging/ivacompras.1 ${CMAKE_CURRENT_BINARY_DIR}/ivacompras.1 @ONLY)
find_program(IVC_GZIP gzip REQUIRED)
add_custom_command(OUTPUT ${CMAKE_CURRENT_BINARY_DIR}/ivacompras.1.gz
                   COMMAND ${IVC_GZIP} -9n -c ${CMAKE_CURRENT_BINARY_DIR}/ivacompras.1 > ${CMAKE_CURRENT_BINARY_DIR}/ivacompras.1.gz
                   DEPENDS ${CMAKE_CURRENT_BINARY_DIR}/ivacompras.1)
add_custom_target(ivacompras_man ALL DEPENDS ${CMAKE_CURRENT_BINARY_DIR}/ivacompras.1.gz)
add_dependencies(ivacompras ivacompras_man)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/ivacompras.1.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)

# Installing installs what was built; it does not build the tests and benchmarks first.
set(CMAKE_SKIP_INSTALL_ALL_DEPENDENCY ON)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME ivacompras)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_VENDOR "IVA Compras")
# The package's Maintainer field: the program's name alone. The package is built locally, by
# whoever installs the program, and the program has no public address to write to; a made-up
# address would only send mail nowhere.
set(CPACK_PACKAGE_CONTACT "IVA Compras")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Libro IVA Compras de pequeñas empresas de la Argentina")
set(CPACK_PACKAGE_DESCRIPTION "Lleva el Libro IVA Compras por empresa y período: facturas de compra con IVA \
por alícuota, percepciones de Ingresos Brutos, proveedores, libro impreso, planilla y archivos para AFIP.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION misc)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# Loaded by Qt at run time, so dpkg-shlibdeps cannot see them: the screen (xcb), the icon
# (SVG) and the fixed-pitch font of the printed ledger.
set(CPACK_DEBIAN_PACKAGE_DEPENDS "qt6-qpa-plugins, libqt6svg6, fonts-liberation")
include(CPack)
