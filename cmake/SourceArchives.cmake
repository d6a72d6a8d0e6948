# SPDX-License-Identifier: MIT
# Source archives of the libraries that are linked into what ships, each identified by its file's name and SHA-256. An
# archive with another checksum is never unpacked, wherever it came from.
#
# An archive is looked for in this order, and the first one with those bytes is used:
#
#   -DQUILLBAR_SOURCES=FOLDER;…  folders that the user names
#   QUILLBAR_SOURCE_CACHE_DIR    .cache/ of this repository, where every preset leaves what it fetched
#   Debian's archive             from wherever this machine's own package sources say that it is, through apt; it holds
#                                every release's sources side by side, so this machine may run another release
#   the library's own address   where its release is the same file
#
#   quillbar_archive(NAME FILE <file> SHA256 <sum> [POOL <folder>] [URLS <address>...] [ELSE <name>]
#                   [REVIEWED <version>])
#     declares an archive. POOL is its folder below pool/main of Debian's archive. ELSE names an archive to take instead
#     where no place has this one; once the cache has that, this one is asked for again after a day. REVIEWED is the newest revision of Debian's whose patches have been read,
#     and none changes a file that is built here; scripts/newer-patches asks for newer ones than that.
#   quillbar_fetch_archives(NAME...)
#     stores each one's path in QUILLBAR_ARCHIVE_<NAME>, or ends the configuration and names those that no place has.
set(QUILLBAR_SOURCES "" CACHE STRING "Folders in which source archives are looked for before they are fetched")
set(QUILLBAR_SOURCE_CACHE_DIR "${PROJECT_SOURCE_DIR}/.cache" CACHE PATH "Where fetched source archives are kept")

macro(quillbar_archive name)
  cmake_parse_arguments(quillbar_archive_${name} "" "FILE;SHA256;POOL;ELSE;REVIEWED" "URLS" ${ARGN})
endmacro()

# Whether FILE has this SHA-256, stored in VARIABLE.
function(quillbar_has_sha256 variable file sha256)
  set(${variable} FALSE PARENT_SCOPE)
  if(EXISTS "${file}" AND NOT IS_DIRECTORY "${file}")
    file(SHA256 "${file}" sum)
    if(sum STREQUAL sha256)
      set(${variable} TRUE PARENT_SCOPE)
    endif()
  endif()
endfunction()

# The addresses of Debian's archive and of its security updates, as this machine's package sources give them.
function(quillbar_debian_mirrors variable)
  find_program(QUILLBAR_APT_GET apt-get NO_CMAKE_FIND_ROOT_PATH)
  find_program(QUILLBAR_APT_HELPER apt-helper PATHS /usr/lib/apt NO_CMAKE_FIND_ROOT_PATH)
  mark_as_advanced(QUILLBAR_APT_GET QUILLBAR_APT_HELPER)
  set(mirrors "")
  if(QUILLBAR_APT_GET AND QUILLBAR_APT_HELPER)
    execute_process(COMMAND "${QUILLBAR_APT_GET}" indextargets --format "$(REPO_URI)" "Created-By: Packages"
        "Origin: Debian"
      OUTPUT_VARIABLE mirrors ERROR_QUIET)
    string(REGEX MATCHALL "[^\n]+" mirrors "${mirrors}")
    if(NOT mirrors)
      # A machine that hasn't read any package lists yet.
      file(GLOB lists /etc/apt/sources.list /etc/apt/sources.list.d/*.list /etc/apt/sources.list.d/*.sources)
      foreach(list IN LISTS lists)
        file(STRINGS "${list}" lines REGEX "^(deb|URIs:)[ \t]")
        string(REGEX MATCHALL "[a-z+]+:/[^] ;\t]+" addresses "${lines}")
        list(APPEND mirrors ${addresses})
      endforeach()
    endif()
    list(TRANSFORM mirrors REPLACE "/+$" "")
    list(REMOVE_DUPLICATES mirrors)
  endif()
  set(${variable} "${mirrors}" PARENT_SCOPE)
endfunction()

# Tries to fetch the archive NAME into FILE, twice from each place because a download can fail for a moment. REPORT
# receives where it was asked for, and what the answer was.
function(quillbar_fetch name file report)
  set(sum ${quillbar_archive_${name}_SHA256})
  set(new "${file}.new")
  set(answers "")
  set(mirrors "")
  if(quillbar_archive_${name}_POOL)
    quillbar_debian_mirrors(mirrors)
    if(NOT mirrors)
      list(APPEND answers "Debian's archive: this machine has no apt with package sources of Debian's")
    endif()
  endif()
  foreach(mirror IN LISTS mirrors)
    set(pool pool/main)
    if(mirror MATCHES "security")
      set(pool pool/updates/main)
    endif()
    set(address "${mirror}/${pool}/${quillbar_archive_${name}_POOL}/${quillbar_archive_${name}_FILE}")
    foreach(attempt IN ITEMS 1 2)
      execute_process(
        COMMAND "${QUILLBAR_APT_HELPER}" -o APT::Sandbox::User=root -o Acquire::http::Timeout=30
          download-file "${address}" "${new}" "SHA256:${sum}"
        OUTPUT_VARIABLE output ERROR_VARIABLE output)
      quillbar_has_sha256(usable "${new}" ${sum})
      if(usable)
        file(RENAME "${new}" "${file}")
        return()
      elseif(output MATCHES "404 ")
        break()
      endif()
    endforeach()
    string(REGEX MATCH "E: [^\n]+" output "${output}")
    list(APPEND answers "${address}: ${output}")
  endforeach()
  foreach(address IN LISTS quillbar_archive_${name}_URLS)
    foreach(attempt IN ITEMS 1 2)
      file(DOWNLOAD "${address}" "${new}" STATUS status INACTIVITY_TIMEOUT 30 TLS_VERIFY ON)
      quillbar_has_sha256(usable "${new}" ${sum})
      if(usable)
        file(RENAME "${new}" "${file}")
        return()
      endif()
    endforeach()
    list(GET status 0 code)
    list(GET status 1 answer)
    if(code EQUAL 0)
      file(SHA256 "${new}" other)
      set(answer "what came has SHA-256 ${other}")
    endif()
    list(APPEND answers "${address}: ${answer}")
  endforeach()
  file(REMOVE "${new}")
  list(JOIN answers "\n      " answers)
  set(${report} "${answers}" PARENT_SCOPE)
endfunction()

# Whether the cache has what can be taken instead of the archive NAME, FILE, which was asked for in vain within a day;
# stored in VARIABLE. Without a network every question takes long.
function(quillbar_was_just_asked_for variable name file)
  set(${variable} FALSE PARENT_SCOPE)
  set(other "${quillbar_archive_${name}_ELSE}")
  if(NOT other OR NOT EXISTS "${file}.asked")
    return()
  endif()
  file(TIMESTAMP "${file}.asked" asked "%s" UTC)
  string(TIMESTAMP now "%s" UTC)
  math(EXPR age "${now} - ${asked}")
  quillbar_has_sha256(usable "${QUILLBAR_SOURCE_CACHE_DIR}/${quillbar_archive_${other}_FILE}"
    ${quillbar_archive_${other}_SHA256})
  if(usable AND age LESS 86400)
    set(${variable} TRUE PARENT_SCOPE)
  endif()
endfunction()

# Looks for the archive NAME in every place. FOUND receives its path, or nothing; MISSING where it was asked for.
function(quillbar_find_archive name found missing)
  set(sum ${quillbar_archive_${name}_SHA256})
  foreach(folder IN LISTS QUILLBAR_SOURCES)
    set(file "${folder}/${quillbar_archive_${name}_FILE}")
    if(EXISTS "${file}")
      quillbar_has_sha256(usable "${file}" ${sum})
      if(NOT usable)
        file(SHA256 "${file}" other)
        message(FATAL_ERROR "QUILLBAR_SOURCES: ${file} has SHA-256\n  ${other}, but what is built is\n"
          "  ${sum}. Remove it, or put the right file there.")
      endif()
      set(${found} "${file}" PARENT_SCOPE)
      return()
    endif()
  endforeach()
  set(file "${QUILLBAR_SOURCE_CACHE_DIR}/${quillbar_archive_${name}_FILE}")
  quillbar_has_sha256(usable "${file}" ${sum})
  if(NOT usable)
    quillbar_was_just_asked_for(is_too_early ${name} "${file}")
    if(is_too_early)
      return()
    endif()
    if(EXISTS "${file}")
      message(NOTICE "${file} doesn't have its SHA-256 and is fetched again.")
    endif()
    message(STATUS "Fetching ${quillbar_archive_${name}_FILE}")
    set(report "")
    quillbar_fetch(${name} "${file}" report)
    quillbar_has_sha256(usable "${file}" ${sum})
    if(NOT usable)
      file(TOUCH "${file}.asked")
    endif()
  endif()
  if(usable)
    set(${found} "${file}" PARENT_SCOPE)
  else()
    set(${missing} "  ${quillbar_archive_${name}_FILE}\n    SHA-256 ${sum}\n    was asked for at\n      ${report}\n"
      PARENT_SCOPE)
  endif()
endfunction()

# Two configurations at the same time fetch an archive once.
function(quillbar_fetch_archives)
  file(MAKE_DIRECTORY "${QUILLBAR_SOURCE_CACHE_DIR}")
  file(LOCK "${QUILLBAR_SOURCE_CACHE_DIR}/fetch.lock" GUARD FUNCTION TIMEOUT 600)
  set(missing "")
  foreach(name IN LISTS ARGN)
    set(found "")
    set(asked "")
    set(candidate ${name})
    while(candidate AND NOT found)
      set(places "")
      quillbar_find_archive(${candidate} found places)
      string(APPEND asked "${places}")
      set(candidate "${quillbar_archive_${candidate}_ELSE}")
    endwhile()
    if(NOT found)
      string(APPEND missing "${asked}")
    endif()
    set(QUILLBAR_ARCHIVE_${name} "${found}" PARENT_SCOPE)
  endforeach()
  if(missing)
    message(NOTICE "No place that was asked has these source archives:\n${missing}")
    message(FATAL_ERROR "Source archives are missing, see above. Put them into ${QUILLBAR_SOURCE_CACHE_DIR}, or into a "
      "folder that you name with -DQUILLBAR_SOURCES=FOLDER.")
  endif()
endfunction()

# quillbar_unpack_archive(NAME FOLDER [PATCHES <name>] [FILES <pattern>...]): the source of the archive NAME in FOLDER,
# which it makes anew. PATCHES names an archive of Debian's whose patches are applied, in the order of its series. FILES
# are what of a large archive is unpacked, with the archive's own folder: "thing-*/src/*.c".
function(quillbar_unpack_archive name folder)
  cmake_parse_arguments(PARSE_ARGV 2 arg "" "PATCHES" "FILES")
  set(work "${folder}.unpacking")
  file(REMOVE_RECURSE "${work}" "${folder}")
  set(only "")
  if(arg_FILES)
    set(only PATTERNS ${arg_FILES})
  endif()
  file(ARCHIVE_EXTRACT INPUT "${QUILLBAR_ARCHIVE_${name}}" DESTINATION "${work}/source" ${only})
  file(GLOB unpacked LIST_DIRECTORIES TRUE "${work}/source/*")
  if(arg_PATCHES)
    find_program(QUILLBAR_PATCH patch REQUIRED NO_CMAKE_FIND_ROOT_PATH)
    mark_as_advanced(QUILLBAR_PATCH)
    file(ARCHIVE_EXTRACT INPUT "${QUILLBAR_ARCHIVE_${arg_PATCHES}}" DESTINATION "${work}")
    set(series "")
    if(EXISTS "${work}/debian/patches/series")
      file(STRINGS "${work}/debian/patches/series" series REGEX "^[^#]")
    endif()
    foreach(line IN LISTS series)
      string(REGEX REPLACE "[ \t].*$" "" patch "${line}")
      execute_process(COMMAND "${QUILLBAR_PATCH}" -p1 --batch --forward --no-backup-if-mismatch
          --input "${work}/debian/patches/${patch}"
        WORKING_DIRECTORY "${unpacked}" RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
      if(NOT result EQUAL 0)
        message(FATAL_ERROR "Debian's patch ${patch} does not fit ${quillbar_archive_${name}_FILE}:\n${output}")
      endif()
    endforeach()
  endif()
  file(RENAME "${unpacked}" "${folder}")
  file(REMOVE_RECURSE "${work}")
endfunction()
