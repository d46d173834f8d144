# Pictures that the sample models share, for the CMakeLists.txt that includes this: KV_PICTURES
# holds their files, KV_PICTURE_FOLDER the folder for INCLUDES.
set(KV_PICTURE_FOLDER ${CMAKE_CURRENT_BINARY_DIR}/pictures)
set(KV_PICTURES)

# kv_model_picture(NAME SIZE [DRAWING] [options of kv_picture]): NAME.bmp from DRAWING.svg.
function(kv_model_picture name size)
    cmake_parse_arguments(ARG "" "DRAWING" "" ${ARGN})
    if(NOT ARG_DRAWING)
        set(ARG_DRAWING ${name})
    endif()
    kv_picture(${KV_PICTURE_FOLDER}/${name}.bmp
               ${CMAKE_CURRENT_FUNCTION_LIST_DIR}/${ARG_DRAWING}.svg ${size}
               ${ARG_UNPARSED_ARGUMENTS})
    set(KV_PICTURES ${KV_PICTURES} ${KV_PICTURE_FOLDER}/${name}.bmp PARENT_SCOPE)
endfunction()

kv_model_picture(maker 85x26)
kv_model_picture(face 8x8)
foreach(utility cleaning alignment nozzle)
    kv_model_picture(${utility} 28x28)
endforeach()
foreach(ink ink_color ink_black)
    kv_model_picture(${ink} 60x64)
endforeach()
foreach(line paper orientation resolution mw hs intent mw_option ht mirror krjnl fd ink media)
    kv_model_picture(line_${line} 18x18)
endforeach()
foreach(ht none coarse fine diffusion)
    kv_model_picture(ht_${ht} 48x48)
endforeach()

# What a mode prints: in colours or black, and as a mirror image of either.
foreach(mode custom draft best economy normal fine photo text retouching full_dots presentation
             mirror_image)
    kv_model_picture(${mode} 64x92)
    kv_model_picture(${mode}_black 64x92 DRAWING ${mode} GRAY)
    kv_model_picture(${mode}_mirror 64x92 DRAWING ${mode} MIRROR)
    kv_model_picture(${mode}_black_mirror 64x92 DRAWING ${mode} GRAY MIRROR)
endforeach()

# kv_preview_pictures(KIND FEED...): what the Paper page shows for a kind of paper from each feed,
# for both orientations and printable areas: KIND_FEED_ORIENTATION_AREA.bmp.
function(kv_preview_pictures kind)
    foreach(feed IN LISTS ARGN)
        foreach(orientation portrait landscape)
            foreach(area maximum centered)
                kv_model_picture(${kind}_${feed}_${orientation}_${area} 120x134 DRAWING preview
                                 BACKGROUND FFFFFF
                                 LAYERS sheet-${kind} ${area}-${kind} ${orientation}-${kind}
                                        feed-${feed})
            endforeach()
        endforeach()
    endforeach()
    set(KV_PICTURES ${KV_PICTURES} PARENT_SCOPE)
endfunction()

kv_preview_pictures(plain cassette manual roll envelope rear)
kv_preview_pictures(envelope manual envelope)
kv_preview_pictures(card cassette manual rear)
kv_preview_pictures(long manual roll)
