# One place for programs, whichever folder they come from.
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/bin")

# Compiler settings shared by every target of the project.
add_library(tallyview_options INTERFACE)
target_include_directories(tallyview_options INTERFACE "${PROJECT_SOURCE_DIR}")
target_compile_options(tallyview_options INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wnon-virtual-dtor -Wold-style-cast
  -Woverloaded-virtual)

option(TALLYVIEW_WARNINGS_AS_ERRORS "Fail the build on any warning" OFF)
if(TALLYVIEW_WARNINGS_AS_ERRORS)
  target_compile_options(tallyview_options INTERFACE -Werror)
endif()

set(TALLYVIEW_SANITIZE "" CACHE STRING "Sanitizers of the whole build, for example address,undefined")
if(TALLYVIEW_SANITIZE)
  # Looks at virtual tables through a pipe, which a test without descriptors does not give it.
  add_compile_options(-fsanitize=${TALLYVIEW_SANITIZE} -fno-sanitize=vptr -fno-sanitize-recover=all
                      -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${TALLYVIEW_SANITIZE})
endif()

# What users run reads files that others wrote: it ends rather than be led astray by one.
if(CMAKE_BUILD_TYPE STREQUAL "Release")
  include(CheckCXXCompilerFlag)
  include(CheckPIESupported)
  check_pie_supported()
  set(CMAKE_POSITION_INDEPENDENT_CODE ON)
  add_compile_options(-U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=3)
  foreach(flag IN ITEMS -fstack-protector-strong -fstack-clash-protection -fcf-protection
                        -mbranch-protection=standard)
    string(MAKE_C_IDENTIFIER "TALLYVIEW_HAS_${flag}" known)
    check_cxx_compiler_flag(${flag} ${known})
    if(${known})
      add_compile_options(${flag})
    endif()
  endforeach()
  add_link_options(-Wl,-z,relro,-z,now)
endif()

# Compiles what the QML compiler generates in one go, which takes a fraction of the time, and
# without warnings: those are for the code that we write.
function(tallyview_bundle_generated_code target)
  get_target_property(sources ${target} SOURCES)
  set(generated ${sources})
  list(FILTER generated INCLUDE REGEX "/\\.rcc/|/qmlcache/|_qmltyperegistrations\\.cpp$|/qrc_")
  list(REMOVE_ITEM sources ${generated})
  set_source_files_properties(${sources} PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
  set_target_properties(${target} PROPERTIES UNITY_BUILD ON UNITY_BUILD_BATCH_SIZE 16
    UNITY_BUILD_CODE_BEFORE_INCLUDE "#pragma GCC diagnostic ignored \"-Wshadow\"")
endfunction()

# tallyview_qml_module(NAME [SOURCES ...] [QML_FILES ...] [DEPENDENCIES ...]): the folder's library,
# tallyview_<name>, and its QML module, Orvik.Tallyview.<Name>.
function(tallyview_qml_module name)
  string(TOLOWER tallyview_${name} target)
  qt_add_qml_module(${target} STATIC VERSION 1.0
    URI Orvik.Tallyview.${name}
    RESOURCE_PREFIX /qt/qml
    OUTPUT_DIRECTORY "${QT_QML_OUTPUT_DIRECTORY}/Orvik/Tallyview/${name}"
    ${ARGN})
  # The registration code that Qt generates includes the headers by name alone.
  target_include_directories(${target} PRIVATE "${CMAKE_CURRENT_SOURCE_DIR}")
  tallyview_bundle_generated_code(${target})
endfunction()
