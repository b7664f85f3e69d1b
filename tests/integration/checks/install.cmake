# Installs what was built into an empty folder, and uses it from there as somebody else would: an application with
# every header, an application of the client, the examples, and the two programs. Removes it in the end.
set(prefix "${WORK_FOLDER}/prefix")
file(REMOVE_RECURSE "${WORK_FOLDER}")

# Runs a command; `output` is what it wrote to its standard output.
function(run)
  execute_process(
    COMMAND ${ARGV}
    OUTPUT_VARIABLE written
    ERROR_VARIABLE errors
    RESULT_VARIABLE status)
  if(NOT status EQUAL 0)
    string(JOIN " " command ${ARGV})
    message(FATAL_ERROR "${command}\nended with ${status}\n${written}${errors}")
  endif()
  set(output "${written}${errors}" PARENT_SCOPE)
endfunction()

function(build_project source)
  get_filename_component(name "${source}" NAME)
  set(flags "")
  if(IS_SANITIZED)
    set(flags "-fsanitize=address,undefined")
  endif()
  run("${CMAKE_COMMAND}" -S "${source}" -B "${WORK_FOLDER}/${name}" -G "${GENERATOR}" "-DCMAKE_BUILD_TYPE=Debug"
      "-DCMAKE_CXX_COMPILER=${COMPILER}" "-DCMAKE_CXX_FLAGS=${flags}" "-DCMAKE_PREFIX_PATH=${prefix}")
  run("${CMAKE_COMMAND}" --build "${WORK_FOLDER}/${name}")
endfunction()

function(expect what pattern)
  if(NOT output MATCHES "${pattern}")
    message(FATAL_ERROR "${what} does not match ${pattern}:\n${output}")
  endif()
endfunction()

function(expect_installed)
  foreach(file IN LISTS ARGV)
    if(NOT EXISTS "${prefix}/${file}")
      message(FATAL_ERROR "${file} is not installed")
    endif()
  endforeach()
endfunction()

# Whatever is installed belongs to a component, and so to a package.
run("${CMAKE_COMMAND}" --install "${BUILD_FOLDER}" --prefix "${prefix}" --component Unspecified)
if(EXISTS "${prefix}")
  message(FATAL_ERROR "without a component is:\n${output}")
endif()
run("${CMAKE_COMMAND}" --install "${BUILD_FOLDER}" --prefix "${prefix}")

build_project("${SOURCE_FOLDER}/tests/integration/consumer")
run("${WORK_FOLDER}/consumer/consumer")

set(simulator "${prefix}/${BINARIES}/vesmar-simulator")
set(vesmar "${prefix}/${BINARIES}/vesmar")
run("${vesmar}" --version)
expect("the version of vesmar" "${VERSION}")
run("${simulator}" --version)
expect("the version of vesmar-simulator" "${VERSION}")
run("${simulator}" run -- "${vesmar}" info)
expect("what vesmar info tells" "PAT")
run("${prefix}/${BINARIES}/vesmar-appliance-test" --help)
# Without its guard, which it finds by where it is installed itself, nothing would be measured.
run("${CMAKE_COMMAND}" -E env --unset=VESMAR_GUARD "${simulator}" run -- "${vesmar}" measure hv --time 1 --time-offset 0)

# An application with every header of the client.
build_project("${SOURCE_FOLDER}/tests/integration/clientconsumer")

set(scenario "${SCENARIOS}/507-rcd-check-object-10.json")
expect_installed("${DOCUMENTS}/events.md" "${DOCUMENTS}/events.schema.json" "${DOCUMENTS}/faults.schema.json"
                 "${scenario}")
run("${simulator}" run --faults "${prefix}/${scenario}" -- "${vesmar}" info)

if(HAS_MANUAL)
  expect_installed("${MANUAL}/vesmar.1" "${MANUAL}/vesmar-measure.1" "${MANUAL}/vesmar-simulator.1"
                   "${COMPLETIONS}/vesmar" "${COMPLETIONS}/vesmar-simulator"
                   "${COMPLETIONS}/../../zsh/vendor-completions/_vesmar"
                   "${COMPLETIONS}/../../fish/vendor_completions.d/vesmar-simulator.fish")
  file(READ "${prefix}/${MANUAL}/vesmar.1" output)
  expect("the version on the page of vesmar" "\"vesmar ${VERSION}\"")
endif()

build_project("${SOURCE_FOLDER}/examples/mainsreadings")
run("${simulator}" run -- "${WORK_FOLDER}/mainsreadings/mainsreadings")
expect("what the example tells" "The mains: [0-9.]+ [0-9.]+\n")

# The same by pkg-config.
set(ENV{PKG_CONFIG_PATH} "${prefix}/${LIBRARIES}/pkgconfig")
function(build_by_pkgconfig package source)
  run("pkg-config" --exact-version=${VERSION} "${package}")
  run("pkg-config" --cflags --libs "${package}")
  separate_arguments(flags UNIX_COMMAND "${output}")
  if(IS_SANITIZED)
    list(APPEND flags "-fsanitize=address,undefined")
  endif()
  set(program "${WORK_FOLDER}/${package}")
  run("${COMPILER}" -std=c++17 "${source}" -o "${program}" ${flags} "-Wl,-rpath,${prefix}/${LIBRARIES}")
  run("${simulator}" run -- "${program}")
endfunction()
build_by_pkgconfig(vesmar "${SOURCE_FOLDER}/examples/mainsreadings/main.cpp")
build_by_pkgconfig(vesmarclient "${SOURCE_FOLDER}/examples/measurement/main.cpp")

build_project("${SOURCE_FOLDER}/examples/everyfunction")
run("${simulator}" run -- "${WORK_FOLDER}/everyfunction/everyfunction" rpe)
expect("what the example of every function tells" "protective earth: [0-9.]+ [0-9.]+ [0-9.]+\n")

build_project("${SOURCE_FOLDER}/examples/service")
run("${WORK_FOLDER}/service/service")
expect("what the catalogue tells" "hv .*\(dangerous\)")
run("${simulator}" run -- "${WORK_FOLDER}/service/service" clock)
expect("what the example of a service tells" "The instrument says .*Outcome::Completed")

build_project("${SOURCE_FOLDER}/examples/measurement")
set(example "${WORK_FOLDER}/measurement/measurement")
run("${simulator}" run -- "${example}")
expect("what the example of a measurement tells" "resistance=[0-9.]+.*Outcome::Completed true")

# It tells when the measurement fails, and ends only when the instrument has stopped all the same.
execute_process(
  COMMAND "${simulator}" run --scenario start-error -- "${example}"
  ERROR_VARIABLE output
  RESULT_VARIABLE status)
if(NOT status EQUAL 1)
  message(FATAL_ERROR "the example of a measurement that fails ended with ${status}\n${output}")
endif()
expect("what the example tells of a failure" "Outcome::Failed true")

# The examples with a screen. What they do is tested from their sources.
if(HAS_QML)
  build_project("${SOURCE_FOLDER}/examples/quick")
  build_project("${SOURCE_FOLDER}/examples/widgets")
  expect_installed("${QML}/Vesmar/qmldir" "${QML}/Vesmar/libvesmarqml.so")
endif()

run("${CMAKE_COMMAND}" "-DMANIFEST=${BUILD_FOLDER}/install_manifest.txt" -P "${SOURCE_FOLDER}/cmake/uninstall.cmake")
file(GLOB_RECURSE left LIST_DIRECTORIES true RELATIVE "${prefix}" "${prefix}/*")
list(FILTER left INCLUDE REGEX "[Vv]esmar")
if(left)
  message(FATAL_ERROR "the removal leaves behind: ${left}")
endif()
