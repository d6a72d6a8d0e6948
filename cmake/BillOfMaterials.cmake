# SPDX-License-Identifier: MIT
# The bill of materials of what ships, as CycloneDX 1.5 in JSON:
#
#   cmake -DVERSION=<version> -DEPOCH=<seconds> -DOUTPUT=<file> [-DPRODUCT=<name>] -P cmake/BillOfMaterials.cmake
#
# What is linked into which file, and under which licence, is read from the table of THIRD-PARTY-NOTICES.md, so that it
# stands once; which sources are built, with their checksums, from the archives that cmake/ declares. PRODUCT leaves out
# what isn't part of that file. What Debian's packages bring is as these are installed on the machine that packs; such a
# package has the checksum of dpkg's list of its files and their sums as a property.
#
# Without OUTPUT the components are listed, one a line: name, version, kind, folder in Debian's archive or package, and
# the revision of Debian's patches that was found to change nothing here.
cmake_minimum_required(VERSION 3.25)
set(root "${CMAKE_CURRENT_LIST_DIR}/..")

# The name in the notices, and what it is built from: archives, or packages of Debian's for our builds.
set(material_libharu archives libharu)
set(material_HarfBuzz archives harfbuzz)
set(material_ICU archives icu)
set(material_libunibreak archives libunibreak)
set(material_libdeflate archives libdeflate)
set(material_libpng archives libpng libpng_patches)
set(material_libjpeg-turbo archives libjpeg-turbo libjpeg-turbo_patches)
set(material_libtiff archives tiff tiff_patches)
set(material_libwebp archives libwebp libwebp_patches)
set(material_libffi archives libffi)
set(material_SQLite archives sqlite3 sqlite3_patches)
set(material_{fmt} archives fmtlib)
set(material_cpp-httplib archives httplib httplib_patches)
set(material_utfcpp packages libutfcpp-dev)
set(material_zlib packages zlib1g-dev libz-mingw-w64-dev)
set(material_cctz packages libcctz-dev)
set(material_CLI11 packages libcli11-dev)
set(material_JSON packages nlohmann-json3-dev)
set(material_GCC's packages libstdc++-12-dev libstdc++-12-dev-arm64-cross libstdc++-12-dev-armhf-cross
  gcc-mingw-w64-x86-64-win32-runtime gcc-mingw-w64-i686-win32-runtime)
set(material_MinGW-w64's packages mingw-w64-x86-64-dev mingw-w64-i686-dev)

# Every line of cmake/ that declares an archive.
macro(quillbar_archive name)
  cmake_parse_arguments(archive_${name} "" "FILE;SHA256;POOL;ELSE;REVIEWED" "URLS" ${ARGN})
endmacro()
file(GLOB_RECURSE modules "${CMAKE_CURRENT_LIST_DIR}/*.cmake")
list(REMOVE_ITEM modules "${CMAKE_CURRENT_LIST_DIR}/SourceArchives.cmake" "${CMAKE_CURRENT_LIST_FILE}")
foreach(module IN LISTS modules)
  file(READ "${module}" text)
  string(REGEX MATCHALL "\nquillbar_archive\\([^)]*\\)" declarations "${text}")
  foreach(declaration IN LISTS declarations)
    cmake_language(EVAL CODE "${declaration}")
  endforeach()
endforeach()

function(escape variable text)
  string(REPLACE "\\" "\\\\" text "${text}")
  string(REPLACE "\"" "\\\"" text "${text}")
  set(${variable} "${text}" PARENT_SCOPE)
endfunction()

set(components "")
set(references "")

# Adds a component: NAME VERSION KIND SUM LICENCE PURL PRODUCTS. KIND is "archives" or "packages".
function(add_component name version kind sum licence purl products)
  escape(licence "${licence}")
  set(hashes "")
  set(property "")
  if(kind STREQUAL "archives")
    set(hashes "\n      \"hashes\": [{\"alg\": \"SHA-256\", \"content\": \"${sum}\"}],")
  else()
    set(property ",
        {\"name\": \"quillbar:sha256-of-installed-files\", \"value\": \"${sum}\"}")
  endif()
  string(APPEND components "${separator}
    {
      \"type\": \"library\",
      \"bom-ref\": \"${purl}\",
      \"name\": \"${name}\",
      \"version\": \"${version}\",${hashes}
      \"licenses\": [{\"license\": {\"name\": \"${licence}\"}}],
      \"purl\": \"${purl}\",
      \"properties\": [
        {\"name\": \"quillbar:linked-into\", \"value\": \"${products}\"}${property}
      ]
    }")
  string(APPEND references "${separator}\"${purl}\"")
  set(components "${components}" PARENT_SCOPE)
  set(references "${references}" PARENT_SCOPE)
  set(separator "," PARENT_SCOPE)
endfunction()

set(separator "")
file(STRINGS "${root}/THIRD-PARTY-NOTICES.md" rows REGEX "^\\| [^l-].*\\|$|^\\| lib[^r].*\\|$")
set(products QuillbarPDFWriter QuillbarCompanion quillbar)
foreach(row IN LISTS rows)
  string(REGEX MATCH "^\\| ([^|]*) \\|([^|]*)\\|([^|]*)\\|([^|]*)\\| ([^|]*) \\|$" ignored "${row}")
  if(NOT ignored)
    continue()
  endif()
  set(title "${CMAKE_MATCH_1}")
  set(licence "${CMAKE_MATCH_5}")
  set(uses "${CMAKE_MATCH_2}" "${CMAKE_MATCH_3}" "${CMAKE_MATCH_4}")
  set(linked "")
  foreach(product use IN ZIP_LISTS products uses)
    if(use MATCHES "in the file" AND (NOT PRODUCT OR PRODUCT STREQUAL product))
      list(APPEND linked "${product}")
    endif()
  endforeach()
  string(REGEX MATCH "^[^ ,]+" name "${title}")
  if(NOT DEFINED material_${name})
    message(FATAL_ERROR "THIRD-PARTY-NOTICES.md has \"${title}\", but ${CMAKE_CURRENT_LIST_FILE} doesn't say what it is "
      "built from.")
  endif()
  if(NOT linked)
    continue()
  endif()
  list(JOIN linked ", " linked)
  set(material ${material_${name}})
  list(POP_FRONT material kind)
  foreach(part IN LISTS material)
    if(kind STREQUAL "archives")
      # The archive that takes the place of one which no place has any more, as SourceArchives.cmake does.
      set(other "${archive_${part}_ELSE}")
      if(other AND NOT EXISTS "${root}/.cache/${archive_${part}_FILE}" AND EXISTS "${root}/.cache/${archive_${other}_FILE}")
        set(part ${other})
      endif()
      if(NOT archive_${part}_FILE)
        message(FATAL_ERROR "No module of cmake/ declares the archive ${part}.")
      endif()
      # name_version.orig.tar.xz, name_version.debian.tar.xz
      string(REGEX MATCH "^([^_]+)_(.+)\\.(orig|debian)\\.tar\\.[a-z0-9]+$" ignored "${archive_${part}_FILE}")
      set(source "${CMAKE_MATCH_1}")
      set(version "${CMAKE_MATCH_2}")
      set(shown "${source}")
      if(CMAKE_MATCH_3 STREQUAL "debian")
        set(shown "${source}, Debian's patches")
      endif()
      string(REPLACE "+" "%2B" encoded "pkg:generic/${source}@${version}?file_name=${archive_${part}_FILE}")
      message(STATUS "${shown}\t${version}\tsource\t${archive_${part}_POOL}\t${archive_${part}_REVIEWED}")
      add_component("${shown}" "${version}" ${kind} "${archive_${part}_SHA256}" "${licence}" "${encoded}" "${linked}")
    else()
      execute_process(COMMAND dpkg-query --show --showformat "\${Version}" "${part}"
        OUTPUT_VARIABLE version ERROR_QUIET RESULT_VARIABLE failed)
      if(failed)
        message(STATUS "${part}\tnot installed here\tpackage\t${part}")
        continue()
      endif()
      execute_process(COMMAND dpkg-query --control-show "${part}" md5sums OUTPUT_VARIABLE list ERROR_QUIET)
      string(SHA256 sum "${list}")
      string(REPLACE "+" "%2B" encoded "pkg:deb/debian/${part}@${version}")
      message(STATUS "${part}\t${version}\tpackage\t${part}")
      add_component("${part}" "${version}" ${kind} "${sum}" "${licence}" "${encoded}" "${linked}")
    endif()
  endforeach()
endforeach()

if(OUTPUT)
  string(TIMESTAMP time "%Y-%m-%dT%H:%M:%SZ" UTC)
  if(EPOCH)
    set(ENV{SOURCE_DATE_EPOCH} "${EPOCH}")
    string(TIMESTAMP time "%Y-%m-%dT%H:%M:%SZ" UTC)
  endif()
  if(NOT PRODUCT)
    set(PRODUCT "Quillbar PDF Writer")
  endif()
  string(REPLACE " " "%20" reference "pkg:generic/${PRODUCT}@${VERSION}")
  string(REPLACE "\",\"" "\", \"" references "${references}")
  file(WRITE "${OUTPUT}" "{
  \"bomFormat\": \"CycloneDX\",
  \"specVersion\": \"1.5\",
  \"version\": 1,
  \"metadata\": {
    \"timestamp\": \"${time}\",
    \"component\": {
      \"type\": \"library\",
      \"bom-ref\": \"${reference}\",
      \"name\": \"${PRODUCT}\",
      \"version\": \"${VERSION}\",
      \"licenses\": [{\"license\": {\"id\": \"MIT\"}}]
    }
  },
  \"components\": [${components}
  ],
  \"dependencies\": [
    {\"ref\": \"${reference}\", \"dependsOn\": [${references}]}
  ]
}
")
endif()
