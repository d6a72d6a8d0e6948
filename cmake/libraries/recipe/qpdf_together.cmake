# SPDX-License-Identifier: MIT
# Included by qpdf's own project. Its sources are compiled a dozen at once, in little more than half the time; these few don't
# go together with others: they share inline code that may be included once, or define a type of the same name.
set(alone BitStream BitWriter QPDFWriter QPDF_encryption QPDF_optimization qpdf-c qpdflogger-c)
# What is for its command line no test calls.
set(left_out JSONHandler QPDFArgParser QPDFJob QPDFJob_argv QPDFJob_config QPDFJob_json qpdfjob-c)
foreach(list IN ITEMS alone left_out)
  list(TRANSFORM ${list} REPLACE "(.+)" "${CMAKE_CURRENT_SOURCE_DIR}/libqpdf/\\1.cc")
endforeach()
cmake_language(DEFER CALL set_source_files_properties ${alone}
  DIRECTORY libqpdf PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
cmake_language(DEFER CALL set_source_files_properties ${left_out}
  DIRECTORY libqpdf PROPERTIES HEADER_FILE_ONLY ON)
