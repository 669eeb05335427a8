# cmake --install build/release --prefix ~/.local
# The program writes the board menu that stands beside it: install it where its user may write.
install(TARGETS itamori itamori-setup DESTINATION lib/itamori)
install(PROGRAMS launch/itamori-launch launch/keep-gate DESTINATION lib/itamori)
install(FILES data/icons/itamori.png DESTINATION lib/itamori)
install(CODE "
    set(FROM \"${CMAKE_SOURCE_DIR}/data/bbs\")
    set(TO \"\${CMAKE_INSTALL_PREFIX}/lib/itamori/bbs\")
    include(\"${CMAKE_SOURCE_DIR}/cmake/CopyMissing.cmake\")")
install(FILES data/icons/itamori.svg DESTINATION share/icons/hicolor/scalable/apps)
install(CODE "
    configure_file(\"${CMAKE_SOURCE_DIR}/data/itamori.desktop.in\"
        \"\${CMAKE_INSTALL_PREFIX}/share/applications/itamori.desktop\" @ONLY)")
# The gate as a service of the user's. Here systemd looks for it, below ~/.local as below /usr/local.
install(FILES data/systemd/itamori-gate.socket DESTINATION share/systemd/user)
install(CODE "
    configure_file(\"${CMAKE_SOURCE_DIR}/data/systemd/itamori-gate.service.in\"
        \"\${CMAKE_INSTALL_PREFIX}/share/systemd/user/itamori-gate.service\" @ONLY)")
