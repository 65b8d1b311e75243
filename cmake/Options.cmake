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
  add_compile_options(-fsanitize=${TALLYVIEW_SANITIZE} -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${TALLYVIEW_SANITIZE})
endif()

# Warnings are for the code that we write, not for what the QML compiler generates.
function(tallyview_quiet_generated_code target)
  get_target_property(sources ${target} SOURCES)
  list(FILTER sources INCLUDE REGEX "/\\.rcc/|/qmlcache/|_qmltyperegistrations\\.cpp$|/qrc_")
  set_source_files_properties(${sources} PROPERTIES COMPILE_OPTIONS "-w")
endfunction()
