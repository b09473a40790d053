# Installs the build to a prefix, moves the prefix, and builds and runs a
# program against what is there then.

function(run)
    execute_process(COMMAND ${ARGV} RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE output)
    if(NOT status EQUAL 0)
        list(JOIN ARGV " " command)
        message(FATAL_ERROR "${command}\nended with ${status}:\n${output}")
    endif()
    set(output "${output}" PARENT_SCOPE)
endfunction()

file(REMOVE_RECURSE "${WORK_DIR}")
set(prefix "${WORK_DIR}/moved here")
run("${CMAKE_COMMAND}" --install "${BUILD_DIR}" --prefix "${WORK_DIR}/prefix")
file(RENAME "${WORK_DIR}/prefix" "${prefix}")

foreach(file IN ITEMS
        bin/vantle
        ${PLUGIN_DIR}/libvantle.so
        lib/extensions/qt/qtquick
        include/vantle/tracelib/tracepoint.h
        include/vantle/hook/object.h
        include/vantle/wrappers/qt/application.h
        include/vantle/wrappers/qt/extensions/qtquickcommon/recording/qteventrecorder.h)
    if(NOT EXISTS "${prefix}/${file}")
        message(FATAL_ERROR "The prefix lacks ${file}")
    endif()
endforeach()

file(GLOB_RECURSE private_headers "${prefix}/include/*_p.h")
if(private_headers)
    message(FATAL_ERROR "Private headers were installed: ${private_headers}")
endif()
foreach(pattern IN ITEMS mousecompressors touchcompressors textcompressors wheelcompressor windowcompressors)
    if(EXISTS "${prefix}/include/vantle/wrappers/qt/extensions/qtquickcommon/compression/${pattern}.h")
        message(FATAL_ERROR "The header of patterns ${pattern}.h was installed")
    endif()
endforeach()

# Neither the package nor the search paths of the binaries may lead back to
# where they were built or first installed.
file(GLOB_RECURSE package_files "${prefix}/*.cmake")
if(NOT package_files)
    message(FATAL_ERROR "The prefix has no CMake package")
endif()
foreach(file IN LISTS package_files)
    file(READ "${file}" text)
    foreach(folder IN ITEMS "${BUILD_DIR}" "${SOURCE_DIR}" "${WORK_DIR}")
        string(FIND "${text}" "${folder}" position)
        if(NOT position EQUAL -1)
            message(FATAL_ERROR "${file} names ${folder}")
        endif()
    endforeach()
endforeach()
file(GLOB libraries "${prefix}/${LIB_DIR}/*.so*")
foreach(file IN LISTS libraries ITEMS "${prefix}/${PLUGIN_DIR}/libvantle.so" "${prefix}/bin/vantle")
    run(readelf -d "${file}")
    if(output MATCHES "R(UN)?PATH[^\n]*\\[([^\n]*:)?/")
        message(FATAL_ERROR "${file} has an absolute search path:\n${output}")
    endif()
    if(output MATCHES "NEEDED[^\n]*\\[/")
        message(FATAL_ERROR "${file} needs a library by its absolute path:\n${output}")
    endif()
endforeach()

run("${prefix}/bin/vantle" --version)

run("${CMAKE_COMMAND}" -S "${CONSUMER_DIR}" -B "${WORK_DIR}/build" -G Ninja
    "-DCMAKE_BUILD_TYPE=${BUILD_TYPE}" "-DCMAKE_CXX_COMPILER=${CXX_COMPILER}" "-DCMAKE_PREFIX_PATH=${prefix}"
    --no-warn-unused-cli)
run("${CMAKE_COMMAND}" --build "${WORK_DIR}/build")
run("${WORK_DIR}/build/consumer" "${prefix}")
