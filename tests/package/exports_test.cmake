# Everything that the shared library exports belongs to the class interface or is one of the two C functions.
execute_process(COMMAND "${NM}" --dynamic --defined-only --demangle "${LIBRARY}"
                OUTPUT_VARIABLE listing COMMAND_ERROR_IS_FATAL ANY)
string(REPLACE ";" "," listing "${listing}")
string(REPLACE "\n" ";" lines "${listing}")

set(name "(QuillNS::|ZOT[A-Za-z]*::)")
set(foreign "")
set(exported 0)
foreach(line IN LISTS lines)
  string(REGEX REPLACE "^[0-9a-f]+ [A-Za-z] " "" symbol "${line}")
  if(symbol STREQUAL "")
    continue()
  endif()
  math(EXPR exported "${exported} + 1")
  if(NOT symbol MATCHES "^((vtable|typeinfo|typeinfo name) for )?${name}"
     AND NOT symbol MATCHES "^(typeinfo|typeinfo name|vtable) for ZOTMessagesInit$"
     AND NOT symbol MATCHES "^GetBeautifiedText(FromString)?$")
    string(APPEND foreign "\n  ${symbol}")
  endif()
endforeach()

if(foreign)
  message(FATAL_ERROR "exported, but no part of the public interface:${foreign}")
endif()
if(exported EQUAL 0)
  message(FATAL_ERROR "${LIBRARY} exports nothing")
endif()
message(STATUS "${exported} symbols")
