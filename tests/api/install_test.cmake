# Installs headers and libraries into a fresh prefix; compiles a C program against them as its author
# would, with what pkg-config says, and starts a small one on the sample machine; a CMake project
# likewise.
#   cmake -DBUILD=... -DSAMPLES=... -DSOURCE=... -DWORK=... -DCC=... -DSANITIZED=... -P install_test.cmake
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
must(pkg-config --cflags kvui)
separate_arguments(cflags UNIX_COMMAND "${output}")
must(${CC} -std=c11 -Wall -Wextra -Wpedantic -Werror ${cflags} -c ${SOURCE} -o ${WORK}/caller.o)
must(pkg-config --libs kvui)
if(NOT output MATCHES "-L${WORK}/.*/kvui .*-lkvui")
    message(FATAL_ERROR "the libraries are not where kvui.pc says: ${output}")
endif()
separate_arguments(libs UNIX_COMMAND "${output}")
foreach(folder platform interface)
    must(${CMAKE_COMMAND} -DCMAKE_INSTALL_PREFIX=${WORK} -P ${BUILD}/${folder}/cmake_install.cmake)
endforeach()
# A plain program cannot start a library that needs the sanitizers.
if(NOT SANITIZED)
    file(WRITE ${WORK}/starts.c "#include <kvui/kvdd.h>
int main(void)
{
    static const char name[] = \"KORVA KJ-150\";
    static DriverDevMode record;
    unsigned i;
    for (i = 0; i < sizeof(name); ++i)
        record.wszModelName[i] = (KVWCHAR)name[i];
    return KVDD_GetOrgDevMode(0, &record) == 1 && record.dm.dmPaperSize == 9 ? 0 : 1;
}
")
    must(${CC} ${cflags} ${WORK}/starts.c -o ${WORK}/starts ${libs})
    must(${CMAKE_COMMAND} -E env KV_ROOT=${SAMPLES} KV_LANG=en_US KV_MEASURE=0 ${WORK}/starts)
    # A CMake project finds the same.
    file(WRITE ${WORK}/project/CMakeLists.txt "cmake_minimum_required(VERSION 3.25)
project(companion LANGUAGES C)
find_package(kvui 0.1 REQUIRED)
add_executable(companion ../starts.c)
target_link_libraries(companion PRIVATE kvui::kvui)
")
    must(${CMAKE_COMMAND} -S ${WORK}/project -B ${WORK}/project/build
         -DCMAKE_PREFIX_PATH=${WORK} -DCMAKE_C_COMPILER=${CC})
    must(${CMAKE_COMMAND} --build ${WORK}/project/build)
    must(${CMAKE_COMMAND} -E env KV_ROOT=${SAMPLES} KV_LANG=en_US KV_MEASURE=0
         ${WORK}/project/build/companion)
    # Without a model table the library refuses, and the program does not start.
    execute_process(COMMAND ${CMAKE_COMMAND} -E env KV_ROOT=${WORK} ${WORK}/starts
                    ERROR_VARIABLE error RESULT_VARIABLE result)
    if(result EQUAL 0 OR NOT error MATCHES "refused to start")
        message(FATAL_ERROR "started without a model table: ${result}\n${error}")
    endif()
endif()
file(REMOVE_RECURSE ${WORK})
