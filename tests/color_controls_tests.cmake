# Tests of the slider panel and the colour controls: their decisions natively, and the
# controls themselves in real windows under Wine.
if(WIN32)
  tessellum_wine_test(color_controls_window_test
    SOURCES color_controls_window_test.cpp color_dialog_driver.cpp control_page.cpp
    LIBS tessellum_color_controls tessellum_window_pixels)
  tessellum_wine_test(control_gallery_test
    SOURCES control_gallery_test.cpp color_dialog_driver.cpp control_page.cpp
    LIBS tessellum_color_controls tessellum_editor_controls tessellum_window_pixels)
  foreach(test color_controls_window_test control_gallery_test)
    add_dependencies(${test} Tessellum)  # they draw the plug-in's pictures
  endforeach()
else()
  tessellum_native_test(color_control_logic_test
    SOURCES rgb_slider_logic_test.cpp color_pair_logic_test.cpp
    LIBS tessellum_color_control_logic)
endif()
