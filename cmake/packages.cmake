# Debian packages, made by cpack -G DEB: the libraries, what a host needs to build with them, and the
# program.
set(library_package libkvfound${PROJECT_VERSION_MAJOR})
set(development_package libkvfound-dev)
set(tool_package kvfound)

foreach(component library development tool)
  install(
    FILES ${PROJECT_SOURCE_DIR}/LICENSE
    DESTINATION share/doc/${${component}_package}
    RENAME copyright
    COMPONENT ${component})
  string(TOUPPER ${component} key)
  set(CPACK_DEBIAN_${key}_PACKAGE_NAME ${${component}_package})
  set(CPACK_DEBIAN_${key}_FILE_NAME DEB-DEFAULT)
  set(CPACK_DEBIAN_${key}_PACKAGE_SECTION libs)
endforeach()
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_TOOL_PACKAGE_SECTION science)

set(CPACK_COMPONENT_LIBRARY_DESCRIPTION "Beddings of structural models: the libraries
 Holds the named, numbered foundations of one model, prunes and renumbers them, and reads and
 writes them as XML.")
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION "Beddings of structural models: for programmers
 Headers, a CMake package and a pkg-config file for programs that use the libraries.")
set(CPACK_COMPONENT_TOOL_DESCRIPTION "Beddings of structural models: the command kvfound
 Shows, converts, checks, compares, prunes and reports on the beddings of documents from a shell.")
set(CPACK_DEBIAN_LIBRARY_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_TOOL_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR}/src ${PROJECT_BINARY_DIR}/platform)
# Both go with the very library that they were built with.
set(same_library "${library_package} (= ${PROJECT_VERSION})")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS ${same_library})
set(CPACK_DEBIAN_TOOL_PACKAGE_DEPENDS ${same_library})

set(CPACK_GENERATOR DEB)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL library development tool)
set(CPACK_PACKAGE_NAME kvfound)
set(CPACK_PACKAGE_CONTACT "the KvFound authors")
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ
                                                WORLD_EXECUTE)
include(CPack)
