# Source archives of Debian, kept in the repository's .cache/ so that every preset fetches them once.
set(QUILLBAR_SOURCE_CACHE_DIR "${PROJECT_SOURCE_DIR}/.cache" CACHE PATH "Where fetched source archives are kept")
set(QUILLBAR_FETCH_SCRIPT "${CMAKE_CURRENT_LIST_DIR}/DebianFetch.cmake")

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

# quillbar_debian_sources(PACKAGES <name>... ARCHIVES <file>... SHA256S <sum>... [TAR_ONLY] REMEDY <text>)
#
# Sees to it that QUILLBAR_SOURCE_CACHE_DIR holds the archive of each source package, with its SHA-256; what is missing
# is fetched, in two attempts. Two configure runs at once fetch it once. Without TAR_ONLY Debian's patches come along
# where the archive has them. REMEDY ends the message when nothing helps.
function(quillbar_debian_sources)
  cmake_parse_arguments(PARSE_ARGV 0 arg "TAR_ONLY" "REMEDY" "PACKAGES;ARCHIVES;SHA256S")
  file(MAKE_DIRECTORY "${QUILLBAR_SOURCE_CACHE_DIR}")
  file(LOCK "${QUILLBAR_SOURCE_CACHE_DIR}/fetch.lock" GUARD FUNCTION TIMEOUT 600)
  foreach(attempt IN ITEMS 1 2 none)
    set(missing "")
    foreach(package archive sum IN ZIP_LISTS arg_PACKAGES arg_ARCHIVES arg_SHA256S)
      quillbar_has_sha256(usable "${QUILLBAR_SOURCE_CACHE_DIR}/${archive}" ${sum})
      if(NOT usable)
        list(APPEND missing ${package})
        list(APPEND wanted "${archive} (SHA-256 ${sum})")
      endif()
    endforeach()
    if(NOT missing)
      return()
    elseif(attempt STREQUAL "none")
      break()
    endif()
    list(JOIN missing ", " names)
    message(STATUS "Fetching sources from Debian's archive: ${names}")
    execute_process(
      COMMAND "${CMAKE_COMMAND}" "-DPACKAGES=${missing}" "-DDESTINATION=${QUILLBAR_SOURCE_CACHE_DIR}"
              "-DWORK_DIR=${PROJECT_BINARY_DIR}/debian-fetch" "-DTAR_ONLY=${arg_TAR_ONLY}" -P "${QUILLBAR_FETCH_SCRIPT}"
      ERROR_VARIABLE report)
    message(NOTICE "${report}")
  endforeach()
  list(REMOVE_DUPLICATES wanted)
  list(JOIN wanted ", " wanted)
  message(FATAL_ERROR "Debian's archive did not give ${wanted} in two attempts; the reason stands above. ${arg_REMEDY}")
endfunction()
