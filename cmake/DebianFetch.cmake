# Fetches source packages from Debian with apt-get, without touching the machine's package system.
#
#   cmake "-DPACKAGES=NAME;…" -DDESTINATION=FOLDER -DWORK_DIR=FOLDER [-DTAR_ONLY=ON] -P DebianFetch.cmake
#
# DESTINATION receives each package's archives: the untouched source and, without TAR_ONLY, Debian's patches with the
# description (.dsc) that joins the two. An archive doesn't always have the patches that its lists name; then those of an
# earlier revision of the same source are taken, or the source comes alone, and the output says so.
#
# The machine's own package sources are copied with "deb" turned into "deb-src", because most machines list binary
# packages only; lists, caches and state are kept in WORK_DIR, so nothing of the system is changed or needs root.
cmake_minimum_required(VERSION 3.25)

find_program(APT_GET apt-get)
find_program(APT_CACHE apt-cache)
if(NOT APT_GET OR NOT APT_CACHE)
  message(FATAL_ERROR "apt-get is not on this machine, so Debian's archive cannot be asked.")
endif()

file(REMOVE_RECURSE "${WORK_DIR}")
file(MAKE_DIRECTORY "${WORK_DIR}/sources.list.d" "${WORK_DIR}/lists/partial" "${WORK_DIR}/cache/archives/partial")

# Both forms of package sources: one line each (*.list) and paragraphs (*.sources).
file(GLOB lists /etc/apt/sources.list /etc/apt/sources.list.d/*.list /etc/apt/sources.list.d/*.sources)
foreach(list IN LISTS lists)
  cmake_path(GET list FILENAME name)
  file(READ "${list}" text)
  if(name MATCHES "\\.sources$")
    string(REGEX REPLACE "(^|\n)Types:[^\n]*" "\\1Types: deb-src" text "${text}")
  else()
    string(REGEX REPLACE "(^|\n)[ \t]*deb-src[^\n]*" "\\1" text "${text}")
    string(REGEX REPLACE "(^|\n)[ \t]*deb([ \t])" "\\1deb-src\\2" text "${text}")
  endif()
  file(WRITE "${WORK_DIR}/sources.list.d/${name}" "${text}")
endforeach()

# Sandbox user root: apt otherwise warns that its own user cannot write into WORK_DIR.
set(private_options --quiet
  -o Dir::Etc::SourceList=/dev/null
  -o "Dir::Etc::SourceParts=${WORK_DIR}/sources.list.d"
  -o "Dir::State::Lists=${WORK_DIR}/lists"
  -o "Dir::Cache=${WORK_DIR}/cache"
  -o APT::Sandbox::User=root
  -o Acquire::Languages=none
  -o Acquire::Retries=1)

# A source that cannot be reached is a warning to apt-get update; what matters is whether the archives come.
execute_process(COMMAND "${APT_GET}" ${private_options} update
  WORKING_DIRECTORY "${WORK_DIR}" RESULT_VARIABLE result OUTPUT_VARIABLE report ERROR_VARIABLE report)
if(NOT result EQUAL 0)
  message(NOTICE "${report}")
  message(FATAL_ERROR "apt-get could not read Debian's package lists; it said what stands above.")
endif()

# Fetches one package, named PACKAGE or PACKAGE=VERSION, into a folder of its own, so that what a failed attempt left is
# not taken for a package.
function(fetch package)
  set(folder "${WORK_DIR}/download")
  file(REMOVE_RECURSE "${folder}")
  file(MAKE_DIRECTORY "${folder}")
  execute_process(COMMAND "${APT_GET}" ${private_options} source --download-only ${ARGN} "${package}"
    WORKING_DIRECTORY "${folder}" RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
  set(result "${result}" PARENT_SCOPE)
  set(output "${output}" PARENT_SCOPE)
endfunction()

# The versions of a package that the lists name, the newest first, as far as they patch the same source as that one.
function(revisions variable package)
  execute_process(COMMAND "${APT_CACHE}" ${private_options} showsrc --only-source "${package}" OUTPUT_VARIABLE paragraphs)
  string(REGEX MATCHALL "(^|\n)Version: [^\n]+" versions "${paragraphs}")
  list(TRANSFORM versions REPLACE "^\n?Version: " "")
  list(REMOVE_DUPLICATES versions)
  list(SORT versions COMPARE NATURAL ORDER DESCENDING)
  set(same "")
  foreach(version IN LISTS versions)
    string(REGEX REPLACE "-[^-]*$" "" source "${version}")
    if(NOT same)
      set(newest_source "${source}")
    endif()
    if(source STREQUAL newest_source)
      list(APPEND same "${version}")
    endif()
  endforeach()
  set(${variable} "${same}" PARENT_SCOPE)
endfunction()

foreach(package IN LISTS PACKAGES)
  set(result 1)
  if(NOT TAR_ONLY)
    revisions(versions ${package})
    foreach(version IN LISTS versions)
      fetch(${package}=${version})
      if(result EQUAL 0)
        break()
      endif()
      message(NOTICE "Debian's patches of ${package} ${version} could not be fetched.")
    endforeach()
  endif()
  if(NOT result EQUAL 0)
    if(NOT TAR_ONLY)
      message(NOTICE "The source of ${package} is used without Debian's patches.")
    endif()
    fetch(${package} --tar-only)
  endif()
  if(NOT result EQUAL 0)
    message(NOTICE "${output}")
    message(FATAL_ERROR "apt-get could not get the source package ${package}; it said what stands above.")
  endif()
  # Everything of a package arrives together, or an interrupted fetch would pass for one without patches.
  file(GLOB files "${WORK_DIR}/download/*")
  file(COPY ${files} DESTINATION "${WORK_DIR}/complete")
endforeach()

file(MAKE_DIRECTORY "${DESTINATION}")
file(GLOB files "${WORK_DIR}/complete/*")
foreach(file IN LISTS files)
  cmake_path(GET file FILENAME name)
  file(RENAME "${file}" "${DESTINATION}/${name}")
endforeach()
file(REMOVE_RECURSE "${WORK_DIR}")
