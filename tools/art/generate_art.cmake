# tessellum_generate_art(GENERATOR): a target `tessellum_art` that runs the art
# generator over resources/art/*.txt into ${CMAKE_BINARY_DIR}/generated_art, touching
# generated_art/art.stamp when done. Each picture is drawn at every step of display scale
# the plug-in takes (96 to 288 DPI, NAME@DPI for the larger ones), and scaled_art.rc
# lists those for the resource compiler. TESSELLUM_ART_FILES (parent scope) lists the
# 96-DPI files.
function(tessellum_generate_art generator)
  file(GLOB texts CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/resources/art/*.txt)
  list(SORT texts)
  set(out ${CMAKE_BINARY_DIR}/generated_art)
  set(files)
  set(scaled)
  foreach(text ${texts})
    get_filename_component(name ${text} NAME_WE)
    file(STRINGS ${text} kind REGEX "^cursor ")
    set(ext bmp)
    if(kind)
      set(ext cur)
    endif()
    set(names ${name})
    file(STRINGS ${text} selected REGEX "^selected ")
    if(selected)
      string(REGEX REPLACE "^selected +" "" selected "${selected}")
      list(APPEND names ${selected})
    endif()
    foreach(n ${names})
      list(APPEND files ${out}/${n}.${ext})
      foreach(dpi 120 144 168 192 216 240 264 288)
        list(APPEND scaled ${out}/${n}@${dpi}.${ext})
      endforeach()
    endforeach()
  endforeach()
  set(ids ${CMAKE_SOURCE_DIR}/resources/resource_ids.h)
  set(script ${CMAKE_SOURCE_DIR}/resources/art.rc)
  add_custom_command(
    OUTPUT ${out}/art.stamp ${out}/scaled_art.rc ${files} ${scaled}
    COMMAND ${CMAKE_COMMAND} -E make_directory ${out}
    COMMAND ${generator} ${out} --scaled ${ids} ${script} ${texts}
    COMMAND ${CMAKE_COMMAND} -E touch ${out}/art.stamp
    DEPENDS ${generator} ${texts} ${ids} ${script}
    COMMENT "Drawing the plug-in's pictures and pointers from text, at every display scale"
    VERBATIM)
  add_custom_target(tessellum_art ALL DEPENDS ${out}/art.stamp)
  set(TESSELLUM_ART_FILES ${files} PARENT_SCOPE)
endfunction()
