# SPDX-License-Identifier: MIT
# Included by qpdf's own project. Its sources are compiled a dozen at once, in little more than half the time; these few don't
# go together with others: they share inline code that may be included once, or define a type of the same name.
set(alone BitStream BitWriter QPDFWriter QPDF_encryption QPDF_optimization qpdf-c qpdfjob-c qpdflogger-c)
list(TRANSFORM alone REPLACE "(.+)" "${CMAKE_CURRENT_SOURCE_DIR}/libqpdf/\\1.cc")
cmake_language(DEFER CALL set_source_files_properties ${alone}
  DIRECTORY libqpdf PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
