# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT

# Every target of this project links this one PRIVATE. It has the warnings and the hardening flags.
add_library(brelprintertool_warnings INTERFACE)
target_compile_features(brelprintertool_warnings INTERFACE cxx_std_17)
# The compiler warns about fortification in a build without optimisation.
set(isOptimised "$<OR:$<CONFIG:Release>,$<CONFIG:RelWithDebInfo>,$<CONFIG:MinSizeRel>>")
target_compile_options(brelprintertool_warnings INTERFACE
    -Wall -Wextra -Wformat=2 -Wnon-virtual-dtor -Wold-style-cast -Woverloaded-virtual -Wshadow
    -fstack-protector-strong
    $<$<BOOL:${BRELPRINTERTOOL_WERROR}>:-Werror>
    "$<${isOptimised}:-U_FORTIFY_SOURCE;-D_FORTIFY_SOURCE=2>")
target_compile_definitions(brelprintertool_warnings INTERFACE
    QT_DISABLE_DEPRECATED_BEFORE=0x050B00
    QT_NO_CAST_FROM_ASCII
    QT_NO_CAST_TO_ASCII)
target_link_options(brelprintertool_warnings INTERFACE LINKER:-z,relro LINKER:-z,now
    # CMake's own check_pie_supported() also gives the linker -fPIE. With link-time optimisation the program would then
    # get copies of Qt's objects, and Qt's libraries would not see them.
    $<$<STREQUAL:$<TARGET_PROPERTY:TYPE>,EXECUTABLE>:-pie>)
