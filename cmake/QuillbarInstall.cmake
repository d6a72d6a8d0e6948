# SPDX-License-Identifier: MIT
# `cmake --install`: the program and both plugins in one folder, since the program loads the plugins beside itself,
# wherever a link to it is; and the link, PREFIX/bin/quillbar.
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
