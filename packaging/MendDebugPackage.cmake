# SPDX-License-Identifier: GPL-3.0-or-later
# Run by CPack after it made the packages. CPack writes the debug package's md5sums with the paths
# of its own staging folder, and gives that package no documentation folder; this mends both, as
# Debian's own tools make such a package: sums of paths from the root, and the documentation
# folder a link to the program's, whose package it depends on.
foreach(package IN LISTS CPACK_PACKAGE_FILES)
  if(NOT package MATCHES "-dbgsym_.*\\.ddeb$")
    continue()
  endif()
  set(tree "${package}.tree")
  file(REMOVE_RECURSE "${tree}")
  execute_process(COMMAND dpkg-deb --raw-extract "${package}" "${tree}" COMMAND_ERROR_IS_FATAL ANY)
  execute_process(COMMAND sh -c "find usr -type f -print0 | LC_ALL=C sort -z | xargs -0 md5sum > DEBIAN/md5sums"
                  WORKING_DIRECTORY "${tree}" COMMAND_ERROR_IS_FATAL ANY)
  file(MAKE_DIRECTORY "${tree}/usr/share/doc")
  file(CREATE_LINK ledgerly "${tree}/usr/share/doc/ledgerly-dbgsym" SYMBOLIC)
  execute_process(COMMAND dpkg-deb --root-owner-group -Zxz --build "${tree}" "${package}"
                  OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
  file(REMOVE_RECURSE "${tree}")
endforeach()
