# Installs the headers into a fresh prefix and compiles a C program against them as its author
# would: with what pkg-config says.
#   cmake -DBUILD=... -DSOURCE=... -DWORK=... -DCC=... -P install_test.cmake
function(must)
    execute_process(COMMAND ${ARGN} OUTPUT_VARIABLE output ERROR_VARIABLE output
                    OUTPUT_STRIP_TRAILING_WHITESPACE RESULT_VARIABLE result)
    if(NOT result EQUAL 0)
        message(FATAL_ERROR "${ARGN}: ${result}\n${output}")
    endif()
    set(output "${output}" PARENT_SCOPE)
endfunction()

file(REMOVE_RECURSE ${WORK})
must(${CMAKE_COMMAND} --install ${BUILD} --prefix ${WORK} --component development)
file(GLOB_RECURSE pc ${WORK}/kvui.pc)
get_filename_component(pcdir "${pc}" DIRECTORY)
set(ENV{PKG_CONFIG_PATH} ${pcdir})
must(pkg-config --define-variable=prefix=${WORK} --cflags kvui)
separate_arguments(cflags UNIX_COMMAND "${output}")
must(${CC} -std=c11 -Wall -Wextra -Wpedantic -Werror ${cflags} -c ${SOURCE} -o ${WORK}/caller.o)
must(pkg-config --define-variable=prefix=${WORK} --libs kvui)
if(NOT output MATCHES "-L${WORK}/.*/kvui .*-lkvui")
    message(FATAL_ERROR "the libraries are not where kvui.pc says: ${output}")
endif()
file(REMOVE_RECURSE ${WORK})
