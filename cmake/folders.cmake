# One object library for each folder of src/. The library of the product and the tests link the same objects.
#
# PELORA_FOLDERS is the folder table, lowest first: a folder may include itself and what stands before it.
# tests/checks/include_order.sh holds every #include against the same order.
set(PELORA_FOLDERS platform frame events links printdata engine material remote keyboard forms)

set(PELORA_QT Qt5::Core Qt5::Gui Qt5::Widgets Qt5::Network Qt5::Sql Qt5::Concurrent Qt5::Svg)

function(pelora_folder name)
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp ${CMAKE_CURRENT_SOURCE_DIR}/*.h
       ${CMAKE_CURRENT_SOURCE_DIR}/*.ui ${CMAKE_CURRENT_SOURCE_DIR}/*/*.cpp ${CMAKE_CURRENT_SOURCE_DIR}/*/*.h
       ${CMAKE_CURRENT_SOURCE_DIR}/*/*.ui)
  add_library(pelora_${name} OBJECT ${sources} ${ARGN})
  target_include_directories(pelora_${name} PUBLIC ${PROJECT_SOURCE_DIR}/src ${PROJECT_SOURCE_DIR}/include)
  target_link_libraries(pelora_${name} PUBLIC ${PELORA_QT} ZLIB::ZLIB OpenSSL::Crypto Threads::Threads ${CMAKE_DL_LIBS})
endfunction()

# pelora_objects(target top): links the objects of folder `top` and of all below it.
function(pelora_objects target top)
  foreach(folder IN LISTS PELORA_FOLDERS)
    target_link_libraries(${target} PRIVATE pelora_${folder})
    if(folder STREQUAL top)
      return()
    endif()
  endforeach()
  message(FATAL_ERROR "no folder ${top}")
endfunction()

# pelora_test(name top [LABELS ...] SOURCES ...): a QtTest program run by CTest on the offscreen platform.
# `top` is the highest folder of src/ that it links, or "none".
function(pelora_test name top)
  cmake_parse_arguments(arg "" "TIMEOUT" "SOURCES;LABELS;LIBS" ${ARGN})
  add_executable(${name} ${arg_SOURCES})
  target_link_libraries(${name} PRIVATE Qt5::Test Qt5::Core ${arg_LIBS})
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests ${PROJECT_SOURCE_DIR})
  if(NOT top STREQUAL "none")
    pelora_objects(${name} ${top})
    target_link_libraries(${name} PRIVATE test_support)
  endif()
  add_test(NAME ${name} COMMAND ${name})
  if(NOT arg_TIMEOUT)
    set(arg_TIMEOUT 120)
  endif()
  if(NOT arg_LABELS)
    set(arg_LABELS fast)
  endif()
  set_tests_properties(${name} PROPERTIES TIMEOUT ${arg_TIMEOUT} LABELS "${arg_LABELS}"
    ENVIRONMENT "QT_QPA_PLATFORM=offscreen;LC_ALL=C.UTF-8;PELORA_TIME_SCALE=100;TSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/tests/tsan.supp ignore_noninstrumented_modules=1 halt_on_error=0 exitcode=66;ASAN_OPTIONS=detect_leaks=0;UBSAN_OPTIONS=halt_on_error=1 print_stacktrace=1")
endfunction()
