# The libraries that bench/ measures beside ours. Nothing else of the project needs them.

function(zvi_link_peers target)
  find_package(CGAL REQUIRED)
  find_package(Boost REQUIRED)
  foreach(peer IN ITEMS geos geos_c muparser)
    find_library(ZVI_PEER_${peer} ${peer} REQUIRED)
    target_link_libraries(${target} PRIVATE "${ZVI_PEER_${peer}}")
  endforeach()
  target_include_directories(${target} SYSTEM PRIVATE ${Boost_INCLUDE_DIRS})
  target_link_libraries(${target} PRIVATE CGAL::CGAL)
endfunction()
