# Rooms: one object library each. A room sees the public headers, its own folder and the rooms named after SEES, so
# that a wrong include does not compile.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)

add_library(quill_settings INTERFACE)
target_compile_options(quill_settings INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion
                                                -ffp-contract=off  # the same ranks, to the last bit, on every processor
                                                $<$<BOOL:${QUILL_WARNINGS_AS_ERRORS}>:-Werror>)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  target_compile_options(quill_settings INTERFACE -Wno-restrict)  # false alarms in std::string: GCC bug 105651
endif()

function(_quill_room target)
  cmake_parse_arguments(ROOM "" "" "SOURCES;SEES;LINKS" ${ARGN})
  add_library(${target} OBJECT ${ROOM_SOURCES})
  target_compile_definitions(${target} PRIVATE QUILL_BUILDING)
  target_include_directories(${target} PUBLIC "${PROJECT_SOURCE_DIR}/src/interfaces" "${CMAKE_CURRENT_SOURCE_DIR}")
  target_link_libraries(${target} PRIVATE quill_settings PUBLIC ${ROOM_LINKS})
  foreach(seen IN LISTS ROOM_SEES)
    target_include_directories(${target} PUBLIC $<TARGET_PROPERTY:${seen},INTERFACE_INCLUDE_DIRECTORIES>)
  endforeach()
  set_property(GLOBAL APPEND PROPERTY QUILL_ROOMS ${target})
  set_property(GLOBAL APPEND PROPERTY QUILL_LINKS ${ROOM_LINKS})
endfunction()

# quill_room(model SOURCES cell.cpp ... [SEES quill_x ...] [LINKS lib ...])
function(quill_room name)
  _quill_room(quill_${name} ${ARGN})
  target_include_directories(quill_${name} PUBLIC "${PROJECT_SOURCE_DIR}/include")
endfunction()

# zot_room(memory SOURCES ...): sees src/interfaces and itself, nothing of the system.
function(zot_room name)
  _quill_room(zot_${name} ${ARGN})
endfunction()
