# Removes the files that a manifest of "cmake --install" names, and the folders that are named after this project and are
# empty then.
#
#   cmake -DMANIFEST=FILE -P uninstall.cmake
if(NOT EXISTS "${MANIFEST}")
  message(FATAL_ERROR "Nothing was installed from this build: there is no ${MANIFEST}.")
endif()
file(STRINGS "${MANIFEST}" files)
foreach(file IN LISTS files)
  set(file "$ENV{DESTDIR}${file}")
  message(STATUS "Removing ${file}")
  file(REMOVE "${file}")
  get_filename_component(folder "${file}" DIRECTORY)
  while(folder MATCHES "[Vv]esmar")
    file(GLOB content "${folder}/*")
    if(NOT content STREQUAL "")
      break()
    endif()
    file(REMOVE_RECURSE "${folder}")
    get_filename_component(folder "${folder}" DIRECTORY)
  endwhile()
endforeach()
