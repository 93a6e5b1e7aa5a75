# The slider panel and the colour boxes. What they decide and paint is portable and
# tested natively; the controls that copy to the screen, time, capture and open the
# system colour dialog exist on Windows only.
add_library(tessellum_color_control_logic STATIC
  ${CMAKE_CURRENT_LIST_DIR}/slider_gradient.cpp
  ${CMAKE_CURRENT_LIST_DIR}/slider_readout.cpp
  ${CMAKE_CURRENT_LIST_DIR}/color_text.cpp
  ${CMAKE_CURRENT_LIST_DIR}/color_box_painters.cpp
  ${CMAKE_CURRENT_LIST_DIR}/color_pair_layout.cpp)
target_link_libraries(tessellum_color_control_logic PUBLIC tessellum_pixels)

if(WIN32)
  add_library(tessellum_color_controls STATIC
    ${CMAKE_CURRENT_LIST_DIR}/rgb_slider_panel.cpp
    ${CMAKE_CURRENT_LIST_DIR}/color_box.cpp
    ${CMAKE_CURRENT_LIST_DIR}/split_color_box.cpp
    ${CMAKE_CURRENT_LIST_DIR}/fore_back_box.cpp
    ${CMAKE_CURRENT_LIST_DIR}/color_pair_control.cpp)
  target_link_libraries(tessellum_color_controls PUBLIC
    tessellum_color_control_logic tessellum_controls tessellum_settings comdlg32 gdi32 user32)
endif()
