# Makes an import library whose DLL is loaded at the first call of one of its functions.
#
#   late_library(winmm PlaySoundW@12 waveOutGetNumDevs@0)
#
# makes the target late_winmm, to be linked in the place of winmm. A program looks for what it
# imports in its own folder first, before any code of it runs, unless the system keeps the DLL
# among the known ones (tools/check-program names them). A late one is looked for where
# win32::load_libraries_from_system() says. The number is the size of a function's arguments in
# 32-bit programs, which is a part of the name there.
function(late_library dll)
  set(functions ${ARGN})
  set(options)
  if(CMAKE_SYSTEM_PROCESSOR STREQUAL "i686")
    # The linker leaves out what is called through its pointer only: the code that loads the DLL,
    # which the pointer leads to at first.
    list(TRANSFORM functions PREPEND "-Wl,--undefined=_" OUTPUT_VARIABLE options)
  else()
    list(TRANSFORM functions REPLACE "@.*" "")
  endif()
  list(JOIN functions "\n" functions)
  set(definition ${PROJECT_BINARY_DIR}/late/${dll}.def)
  set(library ${PROJECT_BINARY_DIR}/late/lib${dll}.a)
  file(CONFIGURE OUTPUT ${definition} CONTENT "LIBRARY ${dll}.dll\nEXPORTS\n${functions}\n")
  add_custom_command(
    OUTPUT ${library}
    COMMAND ${CMAKE_DLLTOOL} --kill-at --input-def ${dll}.def --output-delaylib lib${dll}.a
    WORKING_DIRECTORY ${PROJECT_BINARY_DIR}/late
    DEPENDS ${definition}
    VERBATIM)
  add_custom_target(make_late_${dll} DEPENDS ${library})
  add_library(late_${dll} STATIC IMPORTED GLOBAL)
  set_target_properties(late_${dll} PROPERTIES
    IMPORTED_LOCATION ${library} INTERFACE_LINK_OPTIONS "${options}")
  add_dependencies(late_${dll} make_late_${dll})
endfunction()
