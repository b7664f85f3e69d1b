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
            -Wnull-dereference
            -Wimplicit-fallthrough
            $<$<BOOL:${VESMAR_WARNINGS_AS_ERRORS}>:-Werror>)

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

if(VESMAR_FUZZ)
  add_compile_options(-fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer -g1)
  add_link_options(-fsanitize=address,undefined)
endif()

if(VESMAR_COVERAGE)
  add_compile_options(--coverage -fprofile-update=atomic -g0)
  add_link_options(--coverage)
endif()
