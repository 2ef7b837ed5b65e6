# Everything that the DLL exports belongs to the class interface or is one of the two C functions, whose names are not
# decorated. It needs no DLL but the system's.
cmake_minimum_required(VERSION 3.25)
execute_process(COMMAND "${OBJDUMP}" -p "${LIBRARY}" OUTPUT_VARIABLE listing COMMAND_ERROR_IS_FATAL ANY)

string(REGEX MATCHALL "DLL Name: [^\n]*" needed "${listing}")
foreach(dll IN LISTS needed)
  if(NOT dll MATCHES "^DLL Name: (KERNEL32|msvcrt|ole32|OLEAUT32)\\.dll$")
    message(FATAL_ERROR "needs ${dll}")
  endif()
endforeach()

# "[   3] _ZN7QuillNS5KCell..." behind the heading of the table of names, up to an empty line.
string(REGEX REPLACE ".*\\[Ordinal/Name Pointer\\] Table" "" listing "${listing}")
string(REGEX REPLACE "\n\n.*" "" listing "${listing}")
string(REGEX MATCHALL "[^ \t\n]+\n" names "${listing}\n")
list(TRANSFORM names STRIP)

set(foreign ${names})
list(FILTER foreign EXCLUDE REGEX "^_Z(T[VIS])?N?K?[0-9]+(QuillNS|ZOT)")
list(REMOVE_ITEM foreign GetBeautifiedText GetBeautifiedTextFromString)
if(foreign)
  message(FATAL_ERROR "exported, but no part of the public interface: ${foreign}")
endif()
foreach(name IN ITEMS GetBeautifiedText GetBeautifiedTextFromString)
  if(NOT name IN_LIST names)
    message(FATAL_ERROR "${name} is not exported")
  endif()
endforeach()
list(LENGTH names count)
message(STATUS "${count} symbols")
