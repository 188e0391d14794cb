# Compiler settings that every target of this project shares.
#
# zvi_target_defaults(TARGET) asks for C++20 with warnings, and fixes the number rules: every expression is evaluated
# as it is written (no contraction to fused multiply-add, no fast-math), so that results agree on every host.

# What a project decides for all of its targets is not ours to decide inside another one.
if(PROJECT_IS_TOP_LEVEL)
  if(NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
    set(CMAKE_BUILD_TYPE Release CACHE STRING "Build type" FORCE)
  endif()
  set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
endif()

find_program(ZVI_CCACHE ccache)
if(ZVI_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  set(CMAKE_CXX_COMPILER_LAUNCHER "${ZVI_CCACHE}")
endif()

function(zvi_target_defaults target)
  target_compile_features(${target} PUBLIC cxx_std_20)
  set_target_properties(${target} PROPERTIES
    CXX_EXTENSIONS OFF
    CXX_VISIBILITY_PRESET hidden
    POSITION_INDEPENDENT_CODE ON)
  if(NOT WIN32)
    # There, inline parts of an exported class belong to the library too.
    set_target_properties(${target} PROPERTIES VISIBILITY_INLINES_HIDDEN ON)
  endif()
  if(MSVC)
    target_compile_options(${target} PRIVATE /W4 /permissive- /fp:precise /utf-8)
  else()
    target_compile_options(${target} PRIVATE
      -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wold-style-cast -Wnon-virtual-dtor
      -ffp-contract=off
      $<$<BOOL:${ZVI_WERROR}>:-Werror>)
  endif()
  # Where our own assertions are on, those of the standard library are too: an index in range, a list not empty.
  if(ZVI_SANITIZE OR CMAKE_BUILD_TYPE STREQUAL "Debug")
    target_compile_definitions(${target} PRIVATE _GLIBCXX_ASSERTIONS)
  endif()
  if(ZVI_BUILD_FUZZERS)
    # Every target counts its branches, so that the fuzzer sees into the library too.
    target_compile_options(${target} PRIVATE -fsanitize=fuzzer-no-link)
    target_link_options(${target} PRIVATE -fsanitize=fuzzer-no-link)
  endif()
  if(ZVI_SANITIZE)
    target_compile_options(${target} PRIVATE -fsanitize=${ZVI_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(${target} PRIVATE -fsanitize=${ZVI_SANITIZE})
    # With sanitizers g++ takes what the standard library initialises in branches for uninitialised.
    target_compile_options(${target} PRIVATE $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>)
  endif()
endfunction()
