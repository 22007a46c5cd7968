# Scripts draw the icon and compose the end-of-search sound during the build.
#
# Resource scripts find tallowmere.ico through the include path (ICON "tallowmere.ico"); s_done.wav
# is placed beside the program, where the program looks for it.
if(WIN32)
  find_package(Python3 REQUIRED COMPONENTS Interpreter)

  set(generated_dir ${PROJECT_BINARY_DIR}/generated)
  configure_file(app/Tallowmere32.manifest.in generated/Tallowmere32.manifest @ONLY)

  add_custom_command(
    OUTPUT ${generated_dir}/tallowmere.ico
    COMMAND ${CMAKE_COMMAND} -E make_directory ${generated_dir}
    COMMAND Python3::Interpreter ${PROJECT_SOURCE_DIR}/tools/make_icon.py
            ${generated_dir}/tallowmere.ico
    DEPENDS ${PROJECT_SOURCE_DIR}/tools/make_icon.py
    COMMENT "Drawing tallowmere.ico"
    VERBATIM)
  add_custom_command(
    OUTPUT ${PROJECT_BINARY_DIR}/s_done.wav
    COMMAND Python3::Interpreter ${PROJECT_SOURCE_DIR}/tools/make_sound.py
            ${PROJECT_BINARY_DIR}/s_done.wav
    DEPENDS ${PROJECT_SOURCE_DIR}/tools/make_sound.py
    COMMENT "Composing s_done.wav"
    VERBATIM)
  add_custom_target(assets ALL DEPENDS ${generated_dir}/tallowmere.ico
                                       ${PROJECT_BINARY_DIR}/s_done.wav)
endif()
