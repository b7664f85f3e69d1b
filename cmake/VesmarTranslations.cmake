# Compiles translations into a target of the calling folder, as :/vesmar/translations/NAME.qm.
function(vesmar_add_translations target)
  # A compiled translation is the same for every version of Qt and every machine.
  find_program(VESMAR_LRELEASE lrelease HINTS /usr/lib/qt5/bin /usr/lib/qt6/bin REQUIRED NO_CMAKE_FIND_ROOT_PATH)
  set(entries "")
  foreach(source IN LISTS ARGN)
    get_filename_component(source "${source}" ABSOLUTE)
    get_filename_component(name "${source}" NAME_WE)
    set(compiled "${CMAKE_CURRENT_BINARY_DIR}/${name}.qm")
    add_custom_command(
      OUTPUT "${compiled}"
      COMMAND "${VESMAR_LRELEASE}" -silent "${source}" -qm "${compiled}"
      DEPENDS "${source}"
      VERBATIM)
    string(APPEND entries "<file>${name}.qm</file>")
  endforeach()
  set(list "${CMAKE_CURRENT_BINARY_DIR}/${target}_translations.qrc")
  file(CONFIGURE OUTPUT "${list}" CONTENT "<RCC><qresource prefix=\"/vesmar/translations\">${entries}</qresource></RCC>")
  qt_add_resources(resources "${list}")
  target_sources(${target} PRIVATE ${resources})
endfunction()
