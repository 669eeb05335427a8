# cmake --install build/release --prefix ~/.local
# The program writes the board menu that stands beside it: install it where its user may write.
install(TARGETS itamori DESTINATION lib/itamori)
install(FILES data/icons/itamori.png DESTINATION lib/itamori)
install(CODE "
    set(FROM \"${CMAKE_SOURCE_DIR}/data/bbs\")
    set(TO \"\${CMAKE_INSTALL_PREFIX}/lib/itamori/bbs\")
    include(\"${CMAKE_SOURCE_DIR}/cmake/CopyMissing.cmake\")")
install(FILES data/icons/itamori.svg DESTINATION share/icons/hicolor/scalable/apps)
install(CODE "
    configure_file(\"${CMAKE_SOURCE_DIR}/data/itamori.desktop.in\"
        \"\${CMAKE_INSTALL_PREFIX}/share/applications/itamori.desktop\" @ONLY)")
