# Tests of the pattern grid editor and the palette swatch grid: their painters and hit
# arithmetic natively, the two controls in a real window under Wine.
if(WIN32)
  tessellum_wine_test(grid_swatch_window_test
    SOURCES grid_swatch_window_test.cpp
    LIBS tessellum_editor_controls tessellum_window_pixels)
else()
  tessellum_native_test(editor_pixels_test
    SOURCES grid_painter_test.cpp pattern_painters_test.cpp swatch_painter_test.cpp
    LIBS tessellum_editor_pixels)
endif()
