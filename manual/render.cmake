# Makes manual pages from their sources: -D SCDOC=PROGRAM -D SOURCES=FOLDER -D PAGES=FOLDER. scdoc takes the date that
# they show from SOURCE_DATE_EPOCH.
file(GLOB sources "${SOURCES}/*.scd")
if(NOT sources)
  message(FATAL_ERROR "There is no manual page to make in ${SOURCES}.")
endif()
foreach(source IN LISTS sources)
  get_filename_component(page "${source}" NAME_WLE)
  execute_process(
    COMMAND "${SCDOC}"
    INPUT_FILE "${source}"
    OUTPUT_FILE "${PAGES}/${page}"
    RESULT_VARIABLE status)
  if(NOT status EQUAL 0)
    message(FATAL_ERROR "scdoc cannot make a page of ${source}.")
  endif()
endforeach()
