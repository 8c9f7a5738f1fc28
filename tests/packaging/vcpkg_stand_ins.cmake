# Runs a portfile with stand-ins for the functions of vcpkg:
#   cmake -DPORTFILE=... -DINSTALLED=... -DWORK=... -P vcpkg_stand_ins.cmake
# INSTALLED is a tree to which the project has been installed, WORK a folder for the package.
set(PORT kvfound)
set(CURRENT_PACKAGES_DIR ${WORK}/package)
file(MAKE_DIRECTORY ${CURRENT_PACKAGES_DIR}/debug/include ${CURRENT_PACKAGES_DIR}/debug/share)

function(expect_file path)
  if(NOT EXISTS "${path}")
    message(FATAL_ERROR "there is no ${path}")
  endif()
endfunction()

function(vcpkg_cmake_configure)
  cmake_parse_arguments(PARSE_ARGV 0 arg "" "SOURCE_PATH" "OPTIONS")
  expect_file("${arg_SOURCE_PATH}/CMakeLists.txt")
  execute_process(COMMAND ${CMAKE_COMMAND} -G Ninja -S ${arg_SOURCE_PATH} -B ${WORK}/build ${arg_OPTIONS}
                  COMMAND_ERROR_IS_FATAL ANY OUTPUT_QUIET)
  file(WRITE ${WORK}/options "${arg_OPTIONS}")
endfunction()

function(vcpkg_cmake_install)
  file(COPY ${INSTALLED}/ DESTINATION ${CURRENT_PACKAGES_DIR})
endfunction()

function(vcpkg_cmake_config_fixup)
  cmake_parse_arguments(PARSE_ARGV 0 arg "" "PACKAGE_NAME;CONFIG_PATH" "")
  file(GLOB files ${CURRENT_PACKAGES_DIR}/${arg_CONFIG_PATH}/*)
  if(NOT files)
    message(FATAL_ERROR "there is nothing in ${arg_CONFIG_PATH}")
  endif()
  file(COPY ${files} DESTINATION ${CURRENT_PACKAGES_DIR}/share/${arg_PACKAGE_NAME})
  file(REMOVE_RECURSE ${CURRENT_PACKAGES_DIR}/${arg_CONFIG_PATH})
endfunction()

function(vcpkg_fixup_pkgconfig)
  expect_file(${CURRENT_PACKAGES_DIR}/lib/pkgconfig/kvfound.pc)
endfunction()

function(vcpkg_copy_pdbs)
endfunction()

function(vcpkg_install_copyright)
  cmake_parse_arguments(PARSE_ARGV 0 arg "" "" "FILE_LIST")
  foreach(file ${arg_FILE_LIST})
    expect_file("${file}")
  endforeach()
  file(COPY_FILE ${arg_FILE_LIST} ${CURRENT_PACKAGES_DIR}/share/${PORT}/copyright)
endfunction()

include(${PORTFILE})
