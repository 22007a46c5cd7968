# Makes an import library whose DLL is loaded at the first call of one of its functions.
#
#   late_library(winmm PlaySoundW@12 waveOutGetNumDevs@0)
#
# makes the target late_winmm, to be linked instead of winmm. The system looks for what a program
# imports in the program's own folder first, before any of its code runs, unless the DLL is one of
# the known ones (tools/check-program lists them). A late library is looked for where
# win32::load_libraries_from_system() says. The number is the size of a function's arguments in
# 32-bit programs, where it is a part of the name.
function(late_library dll)
  set(functions ${ARGN})
  set(options)
  if(CMAKE_SYSTEM_PROCESSOR STREQUAL "i686")
    # The linker leaves out what is called only through its pointer: the code that loads the DLL,
    # to which the pointer leads at first.
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
