# The pattern grid editor and the palette swatch grid. Their painters and hit arithmetic
# are portable and tested natively; the two controls that own a bitmap are Win32.
add_library(tessellum_editor_pixels STATIC
  ${CMAKE_CURRENT_LIST_DIR}/grid_painter.cpp
  ${CMAKE_CURRENT_LIST_DIR}/pattern_painters.cpp
  ${CMAKE_CURRENT_LIST_DIR}/swatch_painter.cpp)
target_link_libraries(tessellum_editor_pixels PUBLIC tessellum_pixels tessellum_color)

if(WIN32)
  add_library(tessellum_editor_controls STATIC
    ${CMAKE_CURRENT_LIST_DIR}/grid_editor.cpp
    ${CMAKE_CURRENT_LIST_DIR}/swatch_grid.cpp)
  target_link_libraries(tessellum_editor_controls PUBLIC tessellum_editor_pixels tessellum_controls)
endif()
