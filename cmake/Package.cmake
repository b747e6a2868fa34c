# What "cmake --install" lays out, and the .deb packages that cpack makes of it.
#
# Two packages either way: the array (its libraries and arrayctl), and the module with the server that
# this build is for: smisd, or OpenPegasus, where the module lands in the server's provider directory.

include(GNUInstallDirs)

set(private lib/access-providers) # libraries that only our programs load
set(share ${CMAKE_INSTALL_DATAROOTDIR}/access-providers)
set(doc ${CMAKE_INSTALL_DATAROOTDIR}/doc/access-providers)
set(PEGASUS_PROVIDER_DIR ${CMAKE_INSTALL_LIBDIR}/Pegasus/providers CACHE STRING
    "Where OpenPegasus looks for providers; absolute, or below the prefix")

function(install_rpath)
    foreach(target IN LISTS ARGN)
        set_target_properties(${target} PROPERTIES
            INSTALL_RPATH "$ORIGIN;$ORIGIN/../${private};${installed_private}"
            INSTALL_RPATH_USE_LINK_PATH ON) # to an OpenPegasus outside of the system's directories
    endforeach()
endfunction()
set(installed_private ${CMAKE_INSTALL_PREFIX}/${private})

install(TARGETS dravarray LIBRARY DESTINATION ${private} COMPONENT array NAMELINK_SKIP)
install(TARGETS arrayctl RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT array)
install(FILES docs/state.md docs/description.md docs/examples/demo-array.json LICENSE
    DESTINATION ${doc} COMPONENT array)
install_rpath(dravarray arrayctl AccessProviders)

# What the programs write about themselves
set(written ${CMAKE_BINARY_DIR}/share)
install(FILES ${written}/man/man8/arrayctl.8 DESTINATION ${CMAKE_INSTALL_MANDIR}/man8 COMPONENT array)
install(FILES ${written}/bash-completion/completions/arrayctl
    DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/bash-completion/completions COMPONENT array)

install(DIRECTORY mof DESTINATION ${share} COMPONENT server FILES_MATCHING PATTERN "*.mof")
if(PEGASUS_BUNDLED)
    install(TARGETS pegasus LIBRARY DESTINATION ${private} COMPONENT array NAMELINK_SKIP)
    install(TARGETS AccessProviders LIBRARY DESTINATION ${private} COMPONENT server)
    install(TARGETS smisd RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT server)
    install(FILES ${written}/man/man8/smisd.8
        DESTINATION ${CMAKE_INSTALL_MANDIR}/man8 COMPONENT server)
    install(FILES packaging/smisd.service DESTINATION lib/systemd/system COMPONENT server)
    install(FILES docs/operation.md docs/server.md
        DESTINATION ${doc} COMPONENT server)
    install_rpath(pegasus smisd)
else()
    install(TARGETS AccessProviders LIBRARY DESTINATION ${PEGASUS_PROVIDER_DIR} COMPONENT server)
    install(PROGRAMS packaging/access-register
        DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT server)
    install(FILES docs/openpegasus.md DESTINATION ${doc} COMPONENT server)
endif()

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_VENDOR "The AccessProviders authors")
set(CPACK_PACKAGE_CONTACT "The AccessProviders authors <root@localhost>")
set(CPACK_PACKAGING_INSTALL_PREFIX ${CMAKE_INSTALL_PREFIX})
set(CPACK_COMPONENTS_ALL array server)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION admin)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_LIBRARY_OUTPUT_DIRECTORY})
set(CPACK_DEBIAN_ARRAY_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_SERVER_PACKAGE_SHLIBDEPS ON)
set(CPACK_COMPONENT_ARRAY_DESCRIPTION "Storage array: its libraries and arrayctl, its administration")
if(PEGASUS_BUNDLED)
    set(CPACK_DEBIAN_ARRAY_PACKAGE_NAME access-array)
    set(CPACK_DEBIAN_SERVER_PACKAGE_NAME smisd)
    set(CPACK_COMPONENT_SERVER_DESCRIPTION "CIM server that presents the storage array to SMI-S clients")
else()
    set(CPACK_DEBIAN_ARRAY_PACKAGE_NAME access-array-openpegasus)
    set(CPACK_DEBIAN_ARRAY_PACKAGE_CONFLICTS access-array)
    set(CPACK_DEBIAN_SERVER_PACKAGE_NAME access-openpegasus)
    set(CPACK_COMPONENT_SERVER_DESCRIPTION
        "OpenPegasus providers that present the storage array to SMI-S clients")
endif()
set(CPACK_DEBIAN_SERVER_PACKAGE_DEPENDS "${CPACK_DEBIAN_ARRAY_PACKAGE_NAME} (= ${PROJECT_VERSION})")
set(CPACK_DEBIAN_DEBUGINFO_PACKAGE OFF)
include(CPack)
