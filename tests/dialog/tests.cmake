# Tests of the main dialog: its decisions natively, the real dialog in our host's
# session under Wine.
if(WIN32)
  tessellum_wine_test(filter_dialog_test
    SOURCES ${CMAKE_CURRENT_LIST_DIR}/filter_dialog_test.cpp ${CMAKE_CURRENT_LIST_DIR}/dialog_driver.cpp
      ${CMAKE_CURRENT_LIST_DIR}/../library_samples.cpp
    LIBS tessellum_hostlib tessellum_test_support tessellum_storage)
  add_dependencies(filter_dialog_test Tessellum)
else()
  tessellum_native_test(dialog_logic_test
    SOURCES ${CMAKE_CURRENT_LIST_DIR}/dialog_logic_test.cpp
    LIBS tessellum_color)
endif()
if(WIN32)
  # The dialog built from its sources into the test, so that its allocations can fail.
  tessellum_wine_test(dialog_start_failure_test
    SOURCES ${CMAKE_CURRENT_LIST_DIR}/dialog_start_failure_test.cpp
      ${CMAKE_CURRENT_LIST_DIR}/dialog_driver.cpp ${CMAKE_CURRENT_LIST_DIR}/../library_samples.cpp
      ${CMAKE_CURRENT_LIST_DIR}/../support/failing_heap.cpp
    LIBS tessellum_dialog tessellum_hostlib tessellum_test_support)
  add_dependencies(dialog_start_failure_test Tessellum)
endif()
