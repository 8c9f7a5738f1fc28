# Targets of this host, not of a package: aliases of libraries that no export of KvFound may name. Of {fmt}
# it has the compiled one only.
find_path(PUGIXML_INCLUDE pugixml.hpp REQUIRED)
find_library(PUGIXML_LIBRARY pugixml REQUIRED)
add_library(host_pugixml INTERFACE)
target_include_directories(host_pugixml INTERFACE ${PUGIXML_INCLUDE})
target_link_libraries(host_pugixml INTERFACE ${PUGIXML_LIBRARY})
add_library(pugixml::pugixml ALIAS host_pugixml)

find_path(FMT_INCLUDE fmt/format.h REQUIRED)
find_library(FMT_LIBRARY fmt REQUIRED)
add_library(host_fmt INTERFACE)
target_include_directories(host_fmt INTERFACE ${FMT_INCLUDE})
target_link_libraries(host_fmt INTERFACE ${FMT_LIBRARY})
add_library(fmt::fmt ALIAS host_fmt)

find_path(FAST_FLOAT_INCLUDE fast_float/fast_float.h REQUIRED)
add_library(host_fast_float INTERFACE)
target_include_directories(host_fast_float INTERFACE ${FAST_FLOAT_INCLUDE})
add_library(FastFloat::fast_float ALIAS host_fast_float)
