# The OpenPegasus provider interface as the target Pegasus::Provider: an installed one or ours.
#
# PEGASUS_ROOT  a source tree: headers at ${PEGASUS_ROOT}/src
# PEGASUS_HOME  an installation: libraries at ${PEGASUS_HOME}/lib

set(OPENPEGASUS AUTO CACHE STRING "Which OpenPegasus to build against: AUTO, SYSTEM or BUNDLED")
set_property(CACHE OPENPEGASUS PROPERTY STRINGS AUTO SYSTEM BUNDLED)

# Its headers want to be told the platform.
if(CMAKE_SYSTEM_PROCESSOR STREQUAL "x86_64")
    set(PEGASUS_PLATFORM LINUX_X86_64_GNU)
elseif(CMAKE_SYSTEM_PROCESSOR STREQUAL "aarch64")
    set(PEGASUS_PLATFORM LINUX_AARCH64_GNU)
elseif(CMAKE_SYSTEM_PROCESSOR MATCHES "^ppc")
    set(PEGASUS_PLATFORM LINUX_PPC_GNU)
else()
    set(PEGASUS_PLATFORM LINUX_IX86_GNU)
endif()

if(NOT OPENPEGASUS STREQUAL "BUNDLED")
    find_path(PEGASUS_INCLUDE_DIR Pegasus/Provider/CIMProvider.h
        HINTS ${PEGASUS_ROOT}/src $ENV{PEGASUS_ROOT}/src)
    find_library(PEGASUS_COMMON_LIBRARY pegcommon HINTS ${PEGASUS_HOME}/lib $ENV{PEGASUS_HOME}/lib)
    find_library(PEGASUS_PROVIDER_LIBRARY pegprovider HINTS ${PEGASUS_HOME}/lib $ENV{PEGASUS_HOME}/lib)
endif()

if(PEGASUS_INCLUDE_DIR AND PEGASUS_COMMON_LIBRARY AND PEGASUS_PROVIDER_LIBRARY)
    set(PEGASUS_BUNDLED OFF)
    add_library(pegasus_system INTERFACE)
    target_include_directories(pegasus_system SYSTEM INTERFACE ${PEGASUS_INCLUDE_DIR})
    target_link_libraries(pegasus_system INTERFACE ${PEGASUS_PROVIDER_LIBRARY} ${PEGASUS_COMMON_LIBRARY})
    target_compile_definitions(pegasus_system INTERFACE PEGASUS_PLATFORM_${PEGASUS_PLATFORM})
    add_library(Pegasus::Provider ALIAS pegasus_system)
elseif(OPENPEGASUS STREQUAL "SYSTEM")
    message(FATAL_ERROR "OPENPEGASUS=SYSTEM, but no OpenPegasus was found. Set PEGASUS_ROOT (headers at "
        "$PEGASUS_ROOT/src) and PEGASUS_HOME (libraries at $PEGASUS_HOME/lib), or use OPENPEGASUS=BUNDLED.")
else()
    set(PEGASUS_BUNDLED ON)
    add_subdirectory(pegasus)
endif()
if(PEGASUS_BUNDLED)
    message(STATUS "OpenPegasus: bundled")
else()
    message(STATUS "OpenPegasus: ${PEGASUS_PROVIDER_LIBRARY}")
endif()
