# kvo_floor(NAME USES …): one floor of the house as an object library. It sees only what it names.
function(kvo_floor name)
  cmake_parse_arguments(arg "" "" "USES" ${ARGN})
  add_library(${name} OBJECT)
  target_link_libraries(${name} PUBLIC kvo_flags Qt6::Core Qt6::Gui ${arg_USES})
endfunction()

# kvo_test(NAME SOURCES … OBJECTS …): one test program over the objects of the floors that it names.
# Every program gets the shared main (application object, locale, seed) and the helpers of tests/support.
function(kvo_test name)
  cmake_parse_arguments(arg "" "TIMEOUT" "SOURCES;OBJECTS;LIBRARIES;DEFINITIONS" ${ARGN})
  if(NOT arg_TIMEOUT)
    set(arg_TIMEOUT 300)
  endif()
  add_executable(${name} ${arg_SOURCES})
  target_link_libraries(${name} PRIVATE kvo_flags kvo_test_support ${arg_OBJECTS} ${arg_LIBRARIES})
  target_compile_definitions(${name} PRIVATE ${arg_DEFINITIONS})
  # One ctest per program: a program's tests share its one writing connection, as a host's process does.
  kvo_test_nochmal(${name} ${name} "" ${arg_TIMEOUT})
endfunction()

# kvo_test_nochmal(NAME PROGRAM ENVIRONMENT [TIMEOUT]): a ctest of a program that may have others, with settings of its
# own. A program that can't run on this machine says why and ends with 77.
function(kvo_test_nochmal name programm umgebung)
  set(grenze 300)
  if(ARGC GREATER 3)
    set(grenze ${ARGV3})
  endif()
  add_test(NAME ${name} COMMAND ${programm})
  set_tests_properties(${name} PROPERTIES TIMEOUT ${grenze} SKIP_RETURN_CODE 77 ENVIRONMENT
    "QT_QPA_PLATFORM=offscreen;LC_ALL=C.UTF-8;TZ=Europe/Berlin;${umgebung}")
endfunction()
