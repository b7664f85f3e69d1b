# What every target of this project is compiled with. Link vesmar_compiler_options privately.
add_library(vesmar_compiler_options INTERFACE)

target_compile_options(
  vesmar_compiler_options
  INTERFACE -Wall
            -Wextra
            -Wpedantic
            -Wshadow
            -Wconversion
            -Wsign-conversion
            -Wold-style-cast
            -Wnon-virtual-dtor
            -Woverloaded-virtual
            $<$<CONFIG:Debug>:-Wnull-dereference> # Where it optimises, gcc 12 takes pointers of a QVector for null.
            -Wimplicit-fallthrough
            $<$<BOOL:${VESMAR_WARNINGS_AS_ERRORS}>:-Werror>)

if(VESMAR_QT EQUAL 6)
  # Sizes have 64 bits there. What is kept in this project is far below what an int holds.
  target_compile_options(vesmar_compiler_options INTERFACE -Wno-conversion)
endif()

target_compile_definitions(
  vesmar_compiler_options
  INTERFACE QT_NO_CAST_FROM_ASCII
            QT_NO_CAST_TO_ASCII
            QT_NO_KEYWORDS
            QT_DEPRECATED_WARNINGS)

if(VESMAR_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer -g1)
  add_link_options(-fsanitize=address,undefined)
endif()

if(VESMAR_SANITIZE_THREADS)
  add_compile_options(-fsanitize=thread -g1)
  add_link_options(-fsanitize=thread)
  add_library(vesmar_thread_sanitizer OBJECT "${PROJECT_SOURCE_DIR}/tests/support/threadsanitizer.cpp")
  set_target_properties(vesmar_thread_sanitizer PROPERTIES AUTOMOC OFF)
  target_include_directories(vesmar_thread_sanitizer PRIVATE "${PROJECT_SOURCE_DIR}/tests")
  target_link_libraries(vesmar_thread_sanitizer PRIVATE Qt${VESMAR_QT}::Core)
  # Every program has it, and no library.
  target_sources(
    vesmar_compiler_options
    INTERFACE $<$<STREQUAL:$<TARGET_PROPERTY:TYPE>,EXECUTABLE>:$<TARGET_OBJECTS:vesmar_thread_sanitizer>>)
endif()

if(VESMAR_FUZZ)
  add_compile_options(-fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer -g1)
  add_link_options(-fsanitize=address,undefined)
endif()

if(VESMAR_COVERAGE)
  add_compile_options(--coverage -fprofile-update=atomic -g0)
  add_link_options(--coverage)
endif()
