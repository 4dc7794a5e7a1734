# A parent project that has Boost and pugixml its own way: geomKit must not look for the packages.
find_library(pugixml_file pugixml REQUIRED)
find_path(pugixml_folder pugixml.hpp REQUIRED)
add_library(pugixml::pugixml INTERFACE IMPORTED)
target_link_libraries(pugixml::pugixml INTERFACE "${pugixml_file}")
target_include_directories(pugixml::pugixml INTERFACE "${pugixml_folder}")

find_path(boost_folder boost/intrusive_ptr.hpp REQUIRED)
add_library(${BOOST_TARGET} INTERFACE IMPORTED)
target_include_directories(${BOOST_TARGET} INTERFACE "${boost_folder}")

set(CMAKE_DISABLE_FIND_PACKAGE_Boost ON)
set(CMAKE_DISABLE_FIND_PACKAGE_pugixml ON)
