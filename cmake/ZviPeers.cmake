# The libraries that bench/ measures beside ours. Nothing else of the project needs them.

function(zvi_link_peers target)
  find_package(CGAL REQUIRED)
  find_package(Boost REQUIRED)
  find_library(ZVI_GEOS_LIBRARY geos_c REQUIRED)
  find_path(ZVI_GEOS_INCLUDE geos_c.h REQUIRED)
  target_include_directories(${target} SYSTEM PRIVATE "${ZVI_GEOS_INCLUDE}" ${Boost_INCLUDE_DIRS})
  target_link_libraries(${target} PRIVATE CGAL::CGAL "${ZVI_GEOS_LIBRARY}")
endfunction()
