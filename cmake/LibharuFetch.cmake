# Fetches libharu's source archive from Debian with apt-get, without touching the machine's package system.
#
#   cmake -DARCHIVE=FILE -DSHA256=SUM -DWORK_DIR=FOLDER -P LibharuFetch.cmake
#
# The machine's own package sources are copied with "deb" turned into "deb-src", because most machines list binary
# packages only; lists, caches and state are kept in WORK_DIR, so nothing of the system is changed or needs root.
cmake_minimum_required(VERSION 3.25)

find_program(APT_GET apt-get)
if(NOT APT_GET)
  message(FATAL_ERROR "apt-get is not on this machine, so Debian's archive cannot be asked.")
endif()

file(REMOVE_RECURSE "${WORK_DIR}")
file(MAKE_DIRECTORY "${WORK_DIR}/sources.list.d" "${WORK_DIR}/lists/partial" "${WORK_DIR}/cache/archives/partial"
  "${WORK_DIR}/download")

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
set(private_apt "${APT_GET}" --quiet
  -o Dir::Etc::SourceList=/dev/null
  -o "Dir::Etc::SourceParts=${WORK_DIR}/sources.list.d"
  -o "Dir::State::Lists=${WORK_DIR}/lists"
  -o "Dir::Cache=${WORK_DIR}/cache"
  -o APT::Sandbox::User=root
  -o Acquire::Languages=none
  -o Acquire::Retries=1)

# A source that cannot be reached is a warning to apt-get update; what matters is whether the archive comes.
execute_process(COMMAND ${private_apt} update
  WORKING_DIRECTORY "${WORK_DIR}/download" RESULT_VARIABLE result OUTPUT_VARIABLE report ERROR_VARIABLE report)
if(result EQUAL 0)
  execute_process(COMMAND ${private_apt} source --download-only --tar-only libharu
    WORKING_DIRECTORY "${WORK_DIR}/download" RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
  string(APPEND report "${output}")
endif()
if(NOT result EQUAL 0)
  message(NOTICE "${report}")
  message(FATAL_ERROR "apt-get could not get the source package libharu; it said what stands above.")
endif()

cmake_path(GET ARCHIVE FILENAME archive_name)
set(fetched "${WORK_DIR}/download/${archive_name}")
if(NOT EXISTS "${fetched}")
  message(NOTICE "${report}")
  message(FATAL_ERROR "This machine's release has another version of libharu than ${archive_name}.")
endif()
file(SHA256 "${fetched}" sum)
if(NOT sum STREQUAL SHA256)
  message(FATAL_ERROR "${archive_name} was fetched with SHA-256 ${sum}; expected ${SHA256}.")
endif()
file(RENAME "${fetched}" "${ARCHIVE}")
file(REMOVE_RECURSE "${WORK_DIR}")
