# Installs the library, moves the installed tree, and builds the README's example against it as an outside project
# would: through find_package (shared and static) and through pkg-config. All three programs print the same text.

function(run)
  execute_process(COMMAND ${ARGV} OUTPUT_VARIABLE output RESULT_VARIABLE result ERROR_VARIABLE errors)
  if(NOT result EQUAL 0)
    message(FATAL_ERROR "${ARGV}\n${output}${errors}")
  endif()
  set(output "${output}" PARENT_SCOPE)
endfunction()

function(expect_same_text program)
  run("${CMAKE_COMMAND}" -E env "LD_LIBRARY_PATH=${LIBDIR}" ${program})
  if(NOT output MATCHES "The pull of the Moon")
    message(FATAL_ERROR "${program} printed: ${output}")
  endif()
endfunction()

file(REMOVE_RECURSE "${WORK}/staged" "${WORK}/moved" "${WORK}/outside")
run("${CMAKE_COMMAND}" --install "${BUILD}" --config "${CONFIG}" --prefix "${WORK}/staged")
file(RENAME "${WORK}/staged" "${WORK}/moved")
set(PREFIX "${WORK}/moved")
file(GLOB_RECURSE pc "${PREFIX}/*/quill.pc")
cmake_path(GET pc PARENT_PATH PC_DIR)
cmake_path(GET PC_DIR PARENT_PATH LIBDIR)

# The first C++ block of the README.
file(READ "${README}" readme)
string(REGEX MATCH "```cpp\n([^`]*)```" block "${readme}")
set(program "${WORK}/outside/example.cpp")
file(WRITE "${program}" "${CMAKE_MATCH_1}")

run("${CMAKE_COMMAND}" -S "${CMAKE_CURRENT_LIST_DIR}/consumer" -B "${WORK}/outside/build" -G "${GENERATOR}"
    "-DCMAKE_PREFIX_PATH=${PREFIX}" "-DCMAKE_CXX_COMPILER=${CXX}" "-DCMAKE_CXX_FLAGS=${FLAGS}" "-DPROGRAM=${program}")
run("${CMAKE_COMMAND}" --build "${WORK}/outside/build")
expect_same_text("${WORK}/outside/build/with_quill")
expect_same_text("${WORK}/outside/build/with_quill_static")

# The example project, built as its first lines say.
run("${CMAKE_COMMAND}" -S "${EXAMPLES}/extract" -B "${WORK}/outside/examples" -G "${GENERATOR}"
    "-DCMAKE_PREFIX_PATH=${PREFIX}" "-DCMAKE_CXX_COMPILER=${CXX}" "-DCMAKE_CXX_FLAGS=${FLAGS}")
run("${CMAKE_COMMAND}" --build "${WORK}/outside/examples")
run("${CMAKE_COMMAND}" -E env "LD_LIBRARY_PATH=${LIBDIR}"
    "${WORK}/outside/examples/extract" "${EXAMPLES}/pages/news.html")
if(NOT output MATCHES "^Tide mill turns again.*follow the tide table")
  message(FATAL_ERROR "extract printed: ${output}")
endif()

set(ENV{PKG_CONFIG_PATH} "${PC_DIR}")
run(pkg-config --cflags --libs quill)
separate_arguments(pc_flags UNIX_COMMAND "${output}")
separate_arguments(cxx_flags UNIX_COMMAND "${FLAGS}")
run("${CXX}" -std=c++20 ${cxx_flags} "${program}" -o "${WORK}/outside/with_pkg_config" ${pc_flags})
expect_same_text("${WORK}/outside/with_pkg_config")
