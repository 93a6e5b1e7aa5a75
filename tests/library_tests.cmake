# Tests of the colour core, the file stream and the library file. The stream and the
# library file are tested on both runtimes: natively and under Wine.
set(TESSELLUM_LIBRARY_FILE_TESTS binary_file_test.cpp library_file_test.cpp library_samples.cpp)
if(WIN32)
  tessellum_wine_test(library_storage_test
    SOURCES ${TESSELLUM_LIBRARY_FILE_TESTS} LIBS tessellum_storage)
else()
  tessellum_native_test(color_core_test
    SOURCES web_safe_test.cpp library_model_test.cpp LIBS tessellum_color)
  tessellum_native_test(library_storage_test
    SOURCES ${TESSELLUM_LIBRARY_FILE_TESTS} LIBS tessellum_storage)
  tessellum_native_test(library_alloc_failure_test
    SOURCES library_alloc_failure_test.cpp library_samples.cpp LIBS tessellum_storage)
endif()
