# tessellum_generate_art(GENERATOR): a target `tessellum_art` that runs the art
# generator over resources/art/*.txt into ${CMAKE_BINARY_DIR}/generated_art, touching
# generated_art/art.stamp when done. TESSELLUM_ART_FILES (parent scope) lists the files.
function(tessellum_generate_art generator)
  file(GLOB texts CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/resources/art/*.txt)
  list(SORT texts)
  set(out ${CMAKE_BINARY_DIR}/generated_art)
  set(files)
  foreach(text ${texts})
    get_filename_component(name ${text} NAME_WE)
    file(STRINGS ${text} kind REGEX "^cursor ")
    if(kind)
      list(APPEND files ${out}/${name}.cur)
    else()
      list(APPEND files ${out}/${name}.bmp)
    endif()
    file(STRINGS ${text} selected REGEX "^selected ")
    if(selected)
      string(REGEX REPLACE "^selected +" "" selected "${selected}")
      list(APPEND files ${out}/${selected}.bmp)
    endif()
  endforeach()
  add_custom_command(
    OUTPUT ${out}/art.stamp ${files}
    COMMAND ${CMAKE_COMMAND} -E make_directory ${out}
    COMMAND ${generator} ${out} ${texts}
    COMMAND ${CMAKE_COMMAND} -E touch ${out}/art.stamp
    DEPENDS ${generator} ${texts}
    COMMENT "Drawing the plug-in's pictures and pointers from text"
    VERBATIM)
  add_custom_target(tessellum_art ALL DEPENDS ${out}/art.stamp)
  set(TESSELLUM_ART_FILES ${files} PARENT_SCOPE)
endfunction()
