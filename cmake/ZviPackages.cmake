# The packages that the program and the tests need, as their own CMake packages name them.
#
# zvi_find_package(CLI11 | nlohmann_json | GTest): a native build finds what is installed. A cross build takes the
# headers alone through links in its build folder, so that nothing else of /usr/include comes along, and compiles
# GoogleTest from the sources that Debian's package holds.

# A target NAME for a package that consists of the folder /usr/include/FOLDER.
function(zvi_header_package name folder)
  file(MAKE_DIRECTORY "${PROJECT_BINARY_DIR}/packages")
  file(CREATE_LINK "/usr/include/${folder}" "${PROJECT_BINARY_DIR}/packages/${folder}" SYMBOLIC)
  add_library(${name} INTERFACE IMPORTED GLOBAL)
  target_include_directories(${name} INTERFACE "${PROJECT_BINARY_DIR}/packages")
endfunction()

macro(zvi_find_package package)
  if(NOT CMAKE_CROSSCOMPILING)
    find_package(${package} REQUIRED)
  elseif("${package}" STREQUAL "CLI11")
    zvi_header_package(CLI11::CLI11 CLI)
  elseif("${package}" STREQUAL "nlohmann_json")
    zvi_header_package(nlohmann_json::nlohmann_json nlohmann)
  elseif("${package}" STREQUAL "GTest")
    set(googletest /usr/src/googletest/googletest)
    add_library(gtest STATIC ${googletest}/src/gtest-all.cc)
    target_compile_features(gtest PUBLIC cxx_std_20)
    target_include_directories(gtest SYSTEM PUBLIC ${googletest}/include PRIVATE ${googletest})
    add_library(GTest::gtest ALIAS gtest)
    add_library(gtest_main STATIC ${googletest}/src/gtest_main.cc)
    target_link_libraries(gtest_main PUBLIC gtest)
    add_library(GTest::gtest_main ALIAS gtest_main)
  endif()
endmacro()
