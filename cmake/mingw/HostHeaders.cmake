# Header-only libraries of the build machine, for the cross compiler, which must not see the rest of /usr/include: a
# folder of links to just their headers.
#
# host_headers(CLI11::CLI11 CLI): an interface target for /usr/include/CLI
function(host_headers target folder)
  if(TARGET ${target})
    return()
  endif()
  set(links "${PROJECT_BINARY_DIR}/host-headers")
  file(MAKE_DIRECTORY "${links}")
  file(CREATE_LINK "/usr/include/${folder}" "${links}/${folder}" SYMBOLIC)
  add_library(${target} INTERFACE IMPORTED)
  target_include_directories(${target} SYSTEM INTERFACE "${links}")
endfunction()
