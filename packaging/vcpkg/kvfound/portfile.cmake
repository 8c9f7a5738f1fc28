# An overlay port: it builds the source tree that it lies in.
get_filename_component(SOURCE_PATH "${CMAKE_CURRENT_LIST_DIR}/../../.." ABSOLUTE)

vcpkg_cmake_configure(
  SOURCE_PATH
  "${SOURCE_PATH}"
  OPTIONS
  -DKVFOUND_TOOLS=OFF
  -DKVFOUND_PYTHON=OFF
  -DKVFOUND_WEB=OFF
  -DKVFOUND_EXAMPLES=OFF
  -DKVFOUND_TESTS=OFF
  -DKVFOUND_BENCHMARKS=OFF
  -DKVFOUND_FUZZERS=OFF)
vcpkg_cmake_install()
vcpkg_cmake_config_fixup(PACKAGE_NAME kvfound CONFIG_PATH lib/cmake/KvFound)
vcpkg_fixup_pkgconfig()
vcpkg_copy_pdbs()

file(REMOVE_RECURSE "${CURRENT_PACKAGES_DIR}/debug/include" "${CURRENT_PACKAGES_DIR}/debug/share")
file(INSTALL "${CMAKE_CURRENT_LIST_DIR}/usage" DESTINATION "${CURRENT_PACKAGES_DIR}/share/${PORT}")
vcpkg_install_copyright(FILE_LIST "${SOURCE_PATH}/LICENSE")
