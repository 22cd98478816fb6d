# Half of a source's time went into the same headers of Qt and the C++ library: they are compiled ahead, once for what
# has no widgets, once for what has, once for the tests. Sources name what they use all the same; the build without
# (CMAKE_DISABLE_PRECOMPILE_HEADERS=ON, which clang-tidy uses) shows where one does not.
set(KVO_VORAB_KERN <algorithm> <array> <cmath> <cstdint> <cstring> <functional> <limits> <memory> <mutex> <optional> <span>
  <utility> <vector> <QByteArray> <QDateTime> <QFile> <QHash> <QImage> <QList> <QMap> <QSet> <QSize> <QString> <QStringList>)
set(KVO_VORAB_FENSTER ${KVO_VORAB_KERN} <QAbstractItemView> <QApplication> <QDialog> <QKeyEvent> <QLabel> <QLineEdit>
  <QPainter> <QPushButton> <QTimer> <QWidget>)
set(KVO_VORAB_TEST ${KVO_VORAB_KERN} <gmock/gmock.h> <gtest/gtest.h> <QDir> <QGuiApplication> <QKeyEvent> <QMouseEvent> <QProcess> <QWindow>)

# Nobody waits for the code of a test, but everybody for its compiling. Lines are known, so that a trace can be read.
set(KVO_TESTUEBERSETZUNG $<$<CONFIG:RelWithDebInfo,Debug>:-O0> $<$<CONFIG:RelWithDebInfo,Debug>:-g1>)

file(CONFIGURE OUTPUT "${CMAKE_CURRENT_BINARY_DIR}/vorab.cpp" CONTENT "int main() {\n  return 0;\n}\n")

# kvo_vorab(OWNER KIND LINKED…): the target whose headers the others of its kind reuse.
function(kvo_vorab eigner art)
  if(art STREQUAL "TEST")
    # A program, since programs are compiled with other options than objects of a library.
    add_executable(${eigner} EXCLUDE_FROM_ALL "${PROJECT_BINARY_DIR}/vorab.cpp")
    target_compile_options(${eigner} PRIVATE ${KVO_TESTUEBERSETZUNG})
  else()
    add_library(${eigner} OBJECT EXCLUDE_FROM_ALL "${PROJECT_BINARY_DIR}/vorab.cpp")
  endif()
  target_link_libraries(${eigner} PRIVATE kvo_flags ${ARGN})
  target_precompile_headers(${eigner} PRIVATE ${KVO_VORAB_${art}})
endfunction()

# kvo_floor(NAME USES …): one floor of the house as an object library. It sees only what it names.
function(kvo_floor name)
  cmake_parse_arguments(arg "" "" "USES" ${ARGN})
  add_library(${name} OBJECT)
  target_link_libraries(${name} PUBLIC kvo_flags Qt6::Core Qt6::Gui ${arg_USES})
  if("Qt6::Widgets" IN_LIST arg_USES)
    target_precompile_headers(${name} REUSE_FROM kvo_vorab_fenster)
  else()
    target_precompile_headers(${name} REUSE_FROM kvo_vorab_kern)
  endif()
endfunction()

# No test writes into its user's cache. The shared mains make a folder of their own besides, which is always empty.
set(KVO_TESTCACHE "${PROJECT_BINARY_DIR}/testcache")

# kvo_test(NAME SOURCES … OBJECTS …): one test program over the objects of the floors that it names.
# Every program gets the shared main (application object, locale, seed) and the helpers of tests/support.
function(kvo_test name)
  cmake_parse_arguments(arg "" "TIMEOUT" "SOURCES;OBJECTS;LIBRARIES;DEFINITIONS" ${ARGN})
  if(NOT arg_TIMEOUT)
    set(arg_TIMEOUT 300)
  endif()
  add_executable(${name} ${arg_SOURCES})
  target_link_libraries(${name} PRIVATE kvo_flags kvo_test_support ${arg_OBJECTS} ${arg_LIBRARIES})
  target_compile_options(${name} PRIVATE ${KVO_TESTUEBERSETZUNG})
  target_precompile_headers(${name} REUSE_FROM kvo_vorab_test)
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
    "QT_QPA_PLATFORM=offscreen;LC_ALL=C.UTF-8;TZ=Europe/Berlin;XDG_CACHE_HOME=${KVO_TESTCACHE}/${name};${umgebung}")
endfunction()
