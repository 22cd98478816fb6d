# One interface target carries the language level, the warnings and Qt's hardening for every target of the project.
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

find_program(KVO_CCACHE ccache)
if(KVO_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  set(CMAKE_C_COMPILER_LAUNCHER "${KVO_CCACHE}")
  set(CMAKE_CXX_COMPILER_LAUNCHER "${KVO_CCACHE}")
endif()

add_library(kvo_flags INTERFACE)
target_include_directories(kvo_flags INTERFACE "${PROJECT_SOURCE_DIR}")
target_compile_definitions(kvo_flags INTERFACE
  QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_CAST_FROM_BYTEARRAY QT_NO_KEYWORDS
  QT_NO_URL_CAST_FROM_STRING QT_NO_NARROWING_CONVERSIONS_IN_CONNECT QT_STRICT_ITERATORS
  QT_DISABLE_DEPRECATED_BEFORE=0x060400)
target_compile_options(kvo_flags INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wnon-virtual-dtor -Woverloaded-virtual
  -Wold-style-cast -Wcast-qual -Wformat=2 -Wundef -Wimplicit-fallthrough
  $<$<CXX_COMPILER_ID:GNU>:-Wduplicated-cond -Wlogical-op -Wno-psabi>)
if(KVO_WERROR)
  target_compile_options(kvo_flags INTERFACE -Werror)
endif()
if(KVO_COVERAGE)
  target_compile_options(kvo_flags INTERFACE --coverage)
  target_link_options(kvo_flags INTERFACE --coverage)
endif()
