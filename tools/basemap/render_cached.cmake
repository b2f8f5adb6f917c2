# Puts the built-in charts into a build folder: rendered once, then shared by all build folders of this source tree.
# cmake -DSOURCE=... -DPROGRAM=... -DFONTS=... -DCACHE=... -DOUT=... -P render_cached.cmake
cmake_minimum_required(VERSION 3.25)

file(GLOB inputs LIST_DIRECTORIES false
    ${SOURCE}/data/world/*.gz ${SOURCE}/data/world/*.tsv
    ${SOURCE}/tools/basemap/*.cpp ${SOURCE}/tools/basemap/*.h
    ${SOURCE}/tools/common/cubic* ${SOURCE}/tools/common/linear_solver* ${SOURCE}/tools/common/colour_distance*
    ${SOURCE}/src/chart/chart_writer* ${SOURCE}/src/chart/encode_tile* ${SOURCE}/src/chart/huffman_encoding*
    ${SOURCE}/src/chart/rastelle_header.h)
set(hashes "")
foreach(input IN LISTS inputs)
    file(SHA256 ${input} hash)
    get_filename_component(name ${input} NAME)
    string(APPEND hashes "${name} ${hash}\n")
endforeach()
string(SHA256 key "${hashes}")
string(SUBSTRING ${key} 0 16 key)

file(MAKE_DIRECTORY ${CACHE})
# Another build folder may be at it: the second waits, and then finds the charts.
file(LOCK ${CACHE}/lock TIMEOUT 1200)
if(NOT EXISTS ${CACHE}/${key}/complete)
    file(GLOB outdated LIST_DIRECTORIES true ${CACHE}/*)
    list(REMOVE_ITEM outdated ${CACHE}/lock)
    if(outdated)
        file(REMOVE_RECURSE ${outdated})
    endif()
    message(STATUS "Rendering the built-in charts (about a minute, once)")
    execute_process(COMMAND ${PROGRAM} --data ${SOURCE}/data/world --fonts ${FONTS} --out ${CACHE}/${key}
        RESULT_VARIABLE result)
    if(NOT result EQUAL 0)
        message(FATAL_ERROR "zt-basemap failed: ${result}")
    endif()
    foreach(text LICENSES.md LGPL-3.txt GPL-3.txt)
        file(COPY ${SOURCE}/data/world/${text} DESTINATION ${CACHE}/${key})
    endforeach()
    file(TOUCH ${CACHE}/${key}/complete)
endif()

file(REMOVE_RECURSE ${OUT})
file(MAKE_DIRECTORY ${OUT})
file(GLOB charts LIST_DIRECTORIES false ${CACHE}/${key}/*.rlt ${CACHE}/${key}/*.md ${CACHE}/${key}/*.txt)
foreach(chart IN LISTS charts)
    get_filename_component(name ${chart} NAME)
    file(CREATE_LINK ${chart} ${OUT}/${name} COPY_ON_ERROR)
endforeach()
file(LOCK ${CACHE}/lock RELEASE)
