# Resource libraries from .rc scripts, and resources inside a shared object.
#
#   kv_resource_library(TARGET OUTPUT file SOURCES main.rc [more.rc ...]
#                       [INCLUDES dir ...] [DEPENDS file ...])
#
# builds `file` (a name in the current build folder, or a full path), a resource-only PE file.
# TARGET is a custom target that is part of ALL; its property KV_OUTPUT is the file's full path.
# The scripts pass the C compiler's preprocessor with RC_INVOKED defined, so they may include the
# headers that name the ids (`#ifndef RC_INVOKED` around anything that is not a #define). INCLUDES
# are searched for such headers and for the pictures that a script names; a script's own folder
# and the root of the source tree always are. Files pulled in by #include rebuild the library by
# themselves; pictures and generated headers must be named in DEPENDS.
#
# A script is UTF-8 text. A LANGUAGE statement holds for what follows it, up to the next one, so
# one script can hold any number of languages:
#
#     #include "ids.h"
#
#     LANGUAGE 0x09, 0x01                        // primary language, sublanguage: 0x0409
#     STRINGTABLE
#     BEGIN
#         IDS_GLOSSY "Glossy ""Photo"" Paper\n"  // a double quote is written twice
#     END
#     1350 BITMAP "fine.bmp"
#
#     LANGUAGE 0x11, 0x01                        // 0x0411
#     STRINGTABLE
#     BEGIN
#         IDS_GLOSSY "光沢紙\n"
#     END
#
# A language may have several STRINGTABLEs, but an id only once per language.
#
#   kv_picture(OUT SVG WIDTHxHEIGHT [WIDTHxHEIGHT ...] [GRAY] [MIRROR] [BACKGROUND RRGGBB]
#              [LAYERS id ...])
#
# renders a drawing into OUT, a .bmp of one size or an .ico of several, a name in the current build
# folder. GRAY takes the colours away, MIRROR exchanges left and right; a bitmap is laid on
# BACKGROUND, the grey of dialogs unless given. With LAYERS only these elements of the drawing show,
# the last on top. A library whose script names the picture takes OUT's folder in INCLUDES and OUT
# in DEPENDS, and stands in the same CMakeLists.txt.
#
#   kv_embed_resources(TARGET DLL_TARGET)
#
# puts the file of DLL_TARGET, a kv_resource_library, whole into the ".rsrc" section of TARGET, an
# executable or shared library, which then needs no file beside it. LoadStringA and the like find
# it there through the module handle.

find_program(KV_LLVM_RC NAMES llvm-rc llvm-rc-19 llvm-rc-18 llvm-rc-17 llvm-rc-16 llvm-rc-15
                              llvm-rc-14 REQUIRED)
find_program(KV_LLD_LINK NAMES lld-link lld-link-19 lld-link-18 lld-link-17 lld-link-16
                               lld-link-15 lld-link-14 REQUIRED)

# One script to one .res file, whose path goes to the variable `result`.
function(kv_compile_script result target script includes depends)
    get_filename_component(source ${script} ABSOLUTE)
    get_filename_component(folder ${source} DIRECTORY)
    get_filename_component(stem ${source} NAME_WE)
    set(work ${CMAKE_CURRENT_BINARY_DIR}/${target}.dir)
    set(base ${work}/${stem})
    set(cpp_includes)
    set(rc_includes)
    foreach(dir IN LISTS includes ITEMS ${folder} ${CMAKE_SOURCE_DIR})
        get_filename_component(dir ${dir} ABSOLUTE)
        list(APPEND cpp_includes -I ${dir})
        list(APPEND rc_includes /I ${dir})
    endforeach()
    # -std=c11 rather than the compiler's own dialect, which would replace words such as "linux".
    # The resource compiler gets bare names: it would read a path that begins with "/c" or "/v" as
    # one of its options.
    add_custom_command(
        OUTPUT ${base}.res
        COMMAND ${CMAKE_COMMAND} -E make_directory ${work}
        COMMAND ${CMAKE_C_COMPILER} -E -P -x c -std=c11 -D RC_INVOKED ${cpp_includes}
                -MD -MF ${base}.d -MT ${base}.res -o ${base}.i ${source}
        COMMAND ${CMAKE_COMMAND} -E chdir ${work}
                ${KV_LLVM_RC} /no-preprocess /C 65001 ${rc_includes} /FO ${stem}.res ${stem}.i
        DEPENDS ${source} ${depends}
        DEPFILE ${base}.d
        COMMENT "Compiling resources of ${script}"
        VERBATIM)
    set(${result} ${base}.res PARENT_SCOPE)
endfunction()

function(kv_resource_library target)
    cmake_parse_arguments(ARG "" "OUTPUT" "SOURCES;INCLUDES;DEPENDS" ${ARGN})
    get_filename_component(output ${ARG_OUTPUT} ABSOLUTE BASE_DIR ${CMAKE_CURRENT_BINARY_DIR})
    # The linker, too, could take a full path for an option: its files are named from its folder.
    set(work ${CMAKE_CURRENT_BINARY_DIR}/${target}.dir)
    set(objects)
    set(object_names)
    foreach(script IN LISTS ARG_SOURCES)
        kv_compile_script(object ${target} ${script} "${ARG_INCLUDES}" "${ARG_DEPENDS}")
        list(APPEND objects ${object})
        get_filename_component(object_name ${object} NAME)
        list(APPEND object_names ${object_name})
    endforeach()
    get_filename_component(output_folder ${output} DIRECTORY)
    # /Brepro: the same sources give the same bytes, without the time of day in them.
    add_custom_command(
        OUTPUT ${output}
        COMMAND ${CMAKE_COMMAND} -E make_directory ${output_folder}
        COMMAND ${CMAKE_COMMAND} -E chdir ${work}
                ${KV_LLD_LINK} /dll /noentry /Brepro /machine:x64
                /implib:${target}.lib /out:${output} ${object_names}
        DEPENDS ${objects}
        COMMENT "Linking resource library ${ARG_OUTPUT}"
        VERBATIM)
    add_custom_target(${target} ALL DEPENDS ${output})
    set_target_properties(${target} PROPERTIES KV_OUTPUT ${output})
endfunction()

function(kv_embed_resources target dll_target)
    get_target_property(dll ${dll_target} KV_OUTPUT)
    # An allocated section survives stripping, a retained one the linker's removal of what
    # nobody refers to.
    set(stub ${CMAKE_CURRENT_BINARY_DIR}/${target}_rsrc.S)
    file(CONFIGURE OUTPUT ${stub} @ONLY CONTENT [[
    .section .rsrc,"aR",@progbits
    .balign 16
    .incbin "@dll@"
    .section .note.GNU-stack,"",@progbits
]])
    set_source_files_properties(${stub} PROPERTIES OBJECT_DEPENDS ${dll})
    add_library(${target}_rsrc OBJECT ${stub})
    add_dependencies(${target}_rsrc ${dll_target})
    target_link_libraries(${target} PRIVATE ${target}_rsrc)
endfunction()

function(kv_picture out svg)
    cmake_parse_arguments(ARG "GRAY;MIRROR" "BACKGROUND" "LAYERS" ${ARGN})
    get_filename_component(output ${out} ABSOLUTE BASE_DIR ${CMAKE_CURRENT_BINARY_DIR})
    get_filename_component(source ${svg} ABSOLUTE)
    get_filename_component(folder ${output} DIRECTORY)
    set(options)
    if(ARG_GRAY)
        list(APPEND options --gray)
    endif()
    if(ARG_MIRROR)
        list(APPEND options --mirror)
    endif()
    if(ARG_BACKGROUND)
        list(APPEND options --background ${ARG_BACKGROUND})
    endif()
    foreach(layer IN LISTS ARG_LAYERS)
        list(APPEND options --layer ${layer})
    endforeach()
    add_custom_command(
        OUTPUT ${output}
        COMMAND ${CMAKE_COMMAND} -E make_directory ${folder}
        COMMAND kvpicture ${source} ${ARG_UNPARSED_ARGUMENTS} -o ${output} ${options}
        DEPENDS ${source} kvpicture
        COMMENT "Drawing ${out}"
        VERBATIM)
endfunction()
