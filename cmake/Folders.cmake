# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT

# brelprintertool_add_folder(sources...)
# Makes the library brelprintertool_<folder> of the current folder. Sources include its headers as "<folder>/Name.h".
# That works only in the folder itself and in targets that link the library: each library has an include directory of
# its own, in the build folder, and this directory contains one link, to the folder. An include of a folder that is not
# linked does not compile.
function(brelprintertool_add_folder)
    get_filename_component(folder ${CMAKE_CURRENT_SOURCE_DIR} NAME)
    set(library brelprintertool_${folder})
    set(includes ${CMAKE_CURRENT_BINARY_DIR}/include)
    file(MAKE_DIRECTORY ${includes})
    execute_process(
        COMMAND ${CMAKE_COMMAND} -E create_symlink ${CMAKE_CURRENT_SOURCE_DIR} ${includes}/${folder}
        RESULT_VARIABLE result)
    if(result)
        message(FATAL_ERROR "cannot make the link ${includes}/${folder}")
    endif()
    add_library(${library} STATIC ${ARGN})
    target_include_directories(${library} PUBLIC ${includes})
    target_compile_features(${library} PUBLIC cxx_std_17)
    target_link_libraries(${library} PUBLIC ${qt}::Core PRIVATE brelprintertool_warnings)
endfunction()
