# Tests of the host shell, our host and the built plug-ins.
if(WIN32)
  add_library(tessellum_test_support STATIC support/screenshot.cpp support/plugin_path.cpp)
  target_include_directories(tessellum_test_support SYSTEM PRIVATE /usr/include/stb)
  target_link_libraries(tessellum_test_support PUBLIC gdi32 user32)

  tessellum_wine_test(host_protocol_test
    SOURCES host_protocol_test.cpp
    LIBS tessellum_hostlib tessellum_test_support)
  tessellum_wine_test(about_dialog_test
    SOURCES about_dialog_test.cpp
    LIBS tessellum_hostlib tessellum_test_support)
  add_dependencies(host_protocol_test Tessellum)
  add_dependencies(about_dialog_test Tessellum)

  # Our host's command line, as a user meets it: bad files get words and an exit code.
  add_test(NAME ${TESSELLUM_ARCH}.host_command_line
    COMMAND bash ${CMAKE_CURRENT_SOURCE_DIR}/host_command_line_test.sh
      ${CMAKE_SOURCE_DIR}/scripts/wine-run ${TESSELLUM_ARCH} ${CMAKE_BINARY_DIR})
  set_tests_properties(${TESSELLUM_ARCH}.host_command_line PROPERTIES SKIP_RETURN_CODE 77 TIMEOUT 240)
  # The scripts start each architecture with its own loader; x64 must run.
  if(TESSELLUM_ARCH STREQUAL "x64")
    add_test(NAME x64.wine_loaders
      COMMAND bash ${CMAKE_CURRENT_SOURCE_DIR}/scripts/wine_loaders_test.sh ${CMAKE_SOURCE_DIR}
        ${CMAKE_BINARY_DIR}/tessellum-host.exe ${CMAKE_BINARY_DIR}/../x86/tessellum-host.exe)
  endif()
else()
  # The set-up's reading of the package resolver's complaints.
  add_test(NAME native.apt_conflicts
    COMMAND bash ${CMAKE_CURRENT_SOURCE_DIR}/scripts/apt_conflicts_test.sh)
  tessellum_native_test(band_fill_test
    SOURCES band_fill_test.cpp filter_run_test.cpp
    LIBS tessellum_run)
  tessellum_native_test(host_files_test
    SOURCES pipl_test.cpp tile_text_test.cpp parameters_file_test.cpp
    LIBS tessellum_hostfiles tessellum_tiletext)
  # Static checks of both built plug-ins: machine, the one export, imports, resources.
  tessellum_native_test(plugin_image_test
    SOURCES plugin_image_test.cpp
    LIBS tessellum_hostfiles)
  target_compile_definitions(plugin_image_test PRIVATE
    TESSELLUM_X86_DIR="${TESSELLUM_X86_DIR}" TESSELLUM_X64_DIR="${TESSELLUM_X64_DIR}")
endif()
