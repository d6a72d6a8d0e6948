# SPDX-License-Identifier: MIT
# `cmake --install`: the program and both plugins in one folder, since the program loads the plugins beside itself,
# wherever a link to it is; the link, PREFIX/bin/quillbar; and where there are such things, the manual page and what
# shells complete.
include(GNUInstallDirs)
if(WIN32)
  set(folder "${CMAKE_INSTALL_BINDIR}")
else()
  set(folder "${CMAKE_INSTALL_LIBDIR}/quillbar")
  file(RELATIVE_PATH link "/${CMAKE_INSTALL_BINDIR}" "/${folder}/quillbar")
  install(CODE "
    file(MAKE_DIRECTORY \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_BINDIR}\")
    file(CREATE_LINK \"${link}\" \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_BINDIR}/quillbar\" SYMBOLIC)")
endif()
install(TARGETS quillbar RUNTIME DESTINATION "${folder}")
install(TARGETS QuillbarPDFWriter QuillbarCompanion LIBRARY DESTINATION "${folder}")
install(FILES LICENSE README.md THIRD-PARTY-NOTICES.md DESTINATION "${CMAKE_INSTALL_DOCDIR}")
if(NOT WIN32)
  set(version "${PROJECT_VERSION}")
  string(TIMESTAMP date "%Y-%m-%d" UTC)
  configure_file(packaging/debian/quillbar.1 "${PROJECT_BINARY_DIR}/quillbar.1" @ONLY)
  install(FILES "${PROJECT_BINARY_DIR}/quillbar.1" DESTINATION "${CMAKE_INSTALL_MANDIR}/man1")
  install(FILES packaging/completions/quillbar.bash RENAME quillbar
    DESTINATION "${CMAKE_INSTALL_DATADIR}/bash-completion/completions")
  install(FILES packaging/completions/_quillbar DESTINATION "${CMAKE_INSTALL_DATADIR}/zsh/site-functions")
  install(FILES packaging/completions/quillbar.fish DESTINATION "${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d")
endif()
