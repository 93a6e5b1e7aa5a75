# Tests of the off-screen bitmap, the controls and the art of the plug-in.
if(WIN32)
  add_library(tessellum_window_pixels STATIC window_pixels.cpp art_file_reader.cpp)
  target_link_libraries(tessellum_window_pixels PUBLIC tessellum_test_support gdi32 user32)
  tessellum_wine_test(offscreen_bitmap_test
    SOURCES offscreen_bitmap_test.cpp
    LIBS tessellum_controls tessellum_window_pixels)
  add_dependencies(offscreen_bitmap_test Tessellum)
  tessellum_wine_test(controls_window_test
    SOURCES controls_window_test.cpp
    LIBS tessellum_controls tessellum_window_pixels)
  add_dependencies(controls_window_test Tessellum)
  tessellum_wine_test(settings_test
    SOURCES settings_test.cpp
    LIBS tessellum_settings)
else()
  tessellum_native_test(pixel_painters_test
    SOURCES pixel_painters_test.cpp
    LIBS tessellum_pixels)
  tessellum_native_test(control_logic_test
    SOURCES control_logic_test.cpp)
  # Also reads the art this tree draws; writes the contact sheet beside the screenshots.
  tessellum_native_test(art_files_test
    SOURCES art_files_test.cpp art_file_reader.cpp
    LIBS tessellum_art_text)
  add_dependencies(art_files_test tessellum_art)
  target_include_directories(art_files_test SYSTEM PRIVATE /usr/include/stb)
  target_compile_definitions(art_files_test PRIVATE
    TESSELLUM_ART_DIR="${CMAKE_BINARY_DIR}/generated_art"
    TESSELLUM_SCREENSHOT_DIR="${CMAKE_BINARY_DIR}/../screenshots")
endif()
