# Installs the built project into a prefix of the test's own, builds the example and every public
# header against it, and runs the example and the installed terminal.
cmake_minimum_required(VERSION 3.25)

set(work ${BUILD}/tests/embed/work)
set(prefix ${work}/prefix)
set(ENV{QT_QPA_PLATFORM} offscreen)

function(run)
    execute_process(COMMAND ${ARGN} RESULT_VARIABLE result OUTPUT_VARIABLE output
        ERROR_VARIABLE output ENCODING UTF-8)
    if(NOT result EQUAL 0)
        message(FATAL_ERROR "${ARGN}\ngave ${result}:\n${output}")
    endif()
    set(output "${output}" PARENT_SCOPE)
endfunction()

function(build_project source build)
    run(${CMAKE_COMMAND} -S ${source} -B ${build} -G Ninja -DCMAKE_BUILD_TYPE=Debug
        -DCMAKE_CXX_COMPILER=${CXX} -DCMAKE_PREFIX_PATH=${prefix})
    run(${CMAKE_COMMAND} --build ${build})
endfunction()

file(REMOVE_RECURSE ${prefix})
run(${CMAKE_COMMAND} --install ${BUILD} --prefix ${prefix})

build_project(${SOURCE}/examples/embed ${work}/example)
run(${work}/example/embed)
file(READ ${SOURCE}/examples/embed/expected.txt expected)
if(NOT output STREQUAL expected)
    message(FATAL_ERROR "The example printed\n${output}\nand not\n${expected}")
endif()

build_project(${SOURCE}/tests/embed/headers ${work}/headers)

run(${prefix}/bin/terminal --version)
foreach(file data/markets.csv lang/zh_TW.qm lang/en.qm)
    if(NOT EXISTS ${prefix}/share/tadialogs/${file})
        message(FATAL_ERROR "${file} is not installed")
    endif()
endforeach()
