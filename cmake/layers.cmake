# One library per folder under src/. Headers are included as "layer/header.h", and each layer exports an
# include folder that holds nothing but itself: a target finds the headers of exactly those layers that it
# links, so a dependency that points upwards does not compile.

add_library(vantrel_flags INTERFACE)
target_compile_options(vantrel_flags INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror)
if(VANTREL_SANITIZE)
  target_compile_options(vantrel_flags INTERFACE -fsanitize=${VANTREL_SANITIZE} -fno-sanitize-recover=all
                                                 -fno-omit-frame-pointer)
  target_link_options(vantrel_flags INTERFACE -fsanitize=${VANTREL_SANITIZE})
endif()

# g++ takes a tenth of its time to collect garbage before it has used more than this, in kB.
if(CMAKE_CXX_COMPILER_ID STREQUAL GNU)
  target_compile_options(vantrel_flags INTERFACE --param=ggc-min-heapsize=1000000)
endif()

# As one file, a layer is large by g++'s measure, which inlines less then. Where formatting takes its time it is to inline
# as much as otherwise; elsewhere, its warnings about the library's strings would be false.
set(quick_layers textstream trn cpp engine layout)

# Layers that run once, or wait for files and people: less optimisation is not felt, and two thirds of the time compile
# them. Reading a scheme takes 0.03 ms more.
set(patient_layers cmdline scheme cli learn lsp tool)

# For a first look, compiling is what one waits for. As two files, one for each of two processors, the layers take less
# than two thirds of what they take one by one. Of what optimisation gains, inlining is the most; the passes left out
# take longest for what is not felt.
option(VANTREL_TWO_HALVES "Compile in half the time, and format a fifth slower" OFF)
set(look_optimisation -O1 -finline-functions)
if(CMAKE_CXX_COMPILER_ID STREQUAL GNU)
  list(APPEND look_optimisation -finline-small-functions -findirect-inlining -fpartial-inlining -fno-tree-pta
       -fno-tree-ccp -fno-if-conversion -fno-if-conversion2 -fno-ipa-icf)
endif()
if(VANTREL_TWO_HALVES)
  foreach(half vantrel_quick_half vantrel_patient_half)
    add_library(${half} STATIC)
    target_compile_options(${half} PRIVATE ${look_optimisation})
    target_link_libraries(${half} PRIVATE vantrel_flags)
  endforeach()
endif()

# vantrel_uses(NAME library...): what a layer needs from elsewhere.
function(vantrel_uses name)
  set(library vantrel_${name})
  if(VANTREL_TWO_HALVES)
    set(library vantrel_patient_half)
  endif()
  target_link_libraries(${library} PUBLIC ${ARGN})
endfunction()

# The layer as a part of its half: what links it finds its headers, and the half.
function(vantrel_add_to_half name sources layers)
  set(half vantrel_patient_half)
  if(name IN_LIST quick_layers)
    set(half vantrel_quick_half)
  endif()
  add_library(vantrel_${name} INTERFACE)
  target_include_directories(vantrel_${name} INTERFACE ${PROJECT_BINARY_DIR}/layers/${name})
  target_link_libraries(vantrel_${name} INTERFACE ${layers} ${half})
  target_include_directories(${half} PRIVATE ${PROJECT_BINARY_DIR}/layers/${name})
  target_link_libraries(${half} PRIVATE ${layers})
  target_sources(${half} PRIVATE ${sources})
endfunction()

# vantrel_layer(NAME [layers below it...]): the library vantrel_NAME from src/NAME/*.cpp.
function(vantrel_layer name)
  set(view ${PROJECT_BINARY_DIR}/layers/${name})
  file(MAKE_DIRECTORY ${view})
  if(NOT EXISTS ${view}/${name})
    file(CREATE_LINK ${PROJECT_SOURCE_DIR}/src/${name} ${view}/${name} SYMBOLIC)
  endif()
  file(GLOB sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/src/${name}/*.cpp)
  list(TRANSFORM ARGN PREPEND vantrel_)
  if(VANTREL_TWO_HALVES)
    vantrel_add_to_half(${name} "${sources}" "${ARGN}")
    return()
  endif()
  add_library(vantrel_${name} STATIC ${sources})
  if(CMAKE_UNITY_BUILD AND CMAKE_CXX_COMPILER_ID STREQUAL GNU AND name IN_LIST quick_layers)
    target_compile_options(vantrel_${name} PRIVATE --param=large-unit-insns=1000000)
  endif()
  if(name IN_LIST patient_layers)
    target_compile_options(vantrel_${name} PRIVATE $<$<CONFIG:Release>:-O1>)
  endif()
  target_include_directories(vantrel_${name} PUBLIC ${view})
  target_link_libraries(vantrel_${name} PUBLIC ${ARGN} PRIVATE vantrel_flags)
endfunction()

include(CheckCXXSourceCompiles)

# vantrel_link_quick_start(PROGRAM): finding the many symbols of shared libraries, and moving a program to wherever it
# has been loaded, takes longer than formatting a small file. Where the system has no static C library, that of C++ is.
set(CMAKE_REQUIRED_LINK_OPTIONS -static)
check_cxx_source_compiles("#include <iostream>\nint main() { return 0; }" VANTREL_HAS_STATIC_LIBRARIES)
unset(CMAKE_REQUIRED_LINK_OPTIONS)
function(vantrel_link_quick_start program)
  if(VANTREL_SANITIZE)
    return()
  elseif(VANTREL_HAS_STATIC_LIBRARIES)
    target_link_options(${program} PRIVATE -static -Wl,--gc-sections)
  else()
    target_link_options(${program} PRIVATE -static-libstdc++ -static-libgcc)
  endif()
endfunction()
