# Cross-compiles the macOS targets on Linux, against a macOS 14 SDK, with
# Debian's clang and ld64.lld. Nothing built this way runs here: the build
# proves declarations, selectors, types, availability and linkage.
#
# The SDK is found at ../shared/macos-sdk/MacOSX14.sdk from the source root
# unless WAKELOFT_MACOS_SDK names another.
set(CMAKE_SYSTEM_NAME Darwin)
set(CMAKE_SYSTEM_PROCESSOR arm64)
set(CMAKE_SYSTEM_VERSION 23.0)

set(WAKELOFT_LLVM_ROOT "/usr/lib/llvm-19" CACHE PATH "LLVM installation with clang and ld64.lld")
get_filename_component(wakeloft_source_root "${CMAKE_CURRENT_LIST_DIR}/.." ABSOLUTE)
set(WAKELOFT_MACOS_SDK "${wakeloft_source_root}/../shared/macos-sdk/MacOSX14.sdk" CACHE PATH
    "macOS SDK the cross build compiles and links against")
get_filename_component(WAKELOFT_MACOS_SDK "${WAKELOFT_MACOS_SDK}" ABSOLUTE)
if(NOT EXISTS "${WAKELOFT_MACOS_SDK}/SDKSettings.json")
  message(FATAL_ERROR "No macOS SDK at ${WAKELOFT_MACOS_SDK}; set WAKELOFT_MACOS_SDK to one.")
endif()

# A copy of the SDK that lost its symbolic links (each became a small file
# holding the link's target) cannot be compiled against. Such an SDK is used
# through a tree of links in the build folder that puts them back; the SDK
# itself is never changed or copied.
include("${CMAKE_CURRENT_LIST_DIR}/MacOSSDKLinks.cmake")
set(links "${wakeloft_source_root}/build/.macos-sdk-links")
wakeloft_linked_sdk("${WAKELOFT_MACOS_SDK}" usr/lib/libSystem.tbd "${links}" WAKELOFT_MACOS_SYSROOT)

# Sparkle's headers and a link stub stand in for the release archive, which a
# cross build never downloads.
set(WAKELOFT_SPARKLE_STUB "${WAKELOFT_MACOS_SDK}/../Sparkle-stub" CACHE PATH
    "Folder with a Sparkle.framework of headers and a link stub, used in place of Sparkle's release")
get_filename_component(WAKELOFT_SPARKLE_STUB "${WAKELOFT_SPARKLE_STUB}" ABSOLUTE)
wakeloft_linked_sdk("${WAKELOFT_SPARKLE_STUB}" Sparkle.framework/Headers "${links}" FETCHCONTENT_SOURCE_DIR_SPARKLE)

set(triple arm64-apple-macos14.0)
set(CMAKE_C_COMPILER "${WAKELOFT_LLVM_ROOT}/bin/clang")
set(CMAKE_CXX_COMPILER "${WAKELOFT_LLVM_ROOT}/bin/clang++")
set(CMAKE_OBJCXX_COMPILER "${WAKELOFT_LLVM_ROOT}/bin/clang++")
foreach(language C CXX OBJCXX)
  set(CMAKE_${language}_COMPILER_TARGET ${triple})
endforeach()
set(CMAKE_OSX_SYSROOT "${WAKELOFT_MACOS_SYSROOT}")
set(CMAKE_OSX_ARCHITECTURES arm64)
set(CMAKE_OSX_DEPLOYMENT_TARGET 14.0)

set(CMAKE_AR "${WAKELOFT_LLVM_ROOT}/bin/llvm-ar")
set(CMAKE_RANLIB "${WAKELOFT_LLVM_ROOT}/bin/llvm-ranlib")
set(CMAKE_INSTALL_NAME_TOOL "${WAKELOFT_LLVM_ROOT}/bin/llvm-install-name-tool")
set(CMAKE_OTOOL "${WAKELOFT_LLVM_ROOT}/bin/llvm-otool")
set(CMAKE_LIPO "${WAKELOFT_LLVM_ROOT}/bin/llvm-lipo")
foreach(kind EXE SHARED MODULE)
  set(CMAKE_${kind}_LINKER_FLAGS_INIT "-fuse-ld=lld --ld-path=${WAKELOFT_LLVM_ROOT}/bin/ld64.lld")
endforeach()

# Libraries and headers come from the SDK only; programs from this machine.
set(CMAKE_FIND_ROOT_PATH "${WAKELOFT_MACOS_SYSROOT}")
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

set(WAKELOFT_CROSS_COMPILING_MACOS ON)
