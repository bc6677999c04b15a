# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT

# The generation of Qt is chosen, never guessed: both may be installed. Targets link ${qt}::<component>.
set(BRELPRINTERTOOL_QT 5 CACHE STRING "Generation of Qt: 5 or 6")
set_property(CACHE BRELPRINTERTOOL_QT PROPERTY STRINGS 5 6)
if(BRELPRINTERTOOL_QT STREQUAL "5")
    set(oldestQt 5.11)
elseif(BRELPRINTERTOOL_QT STREQUAL "6")
    set(oldestQt 6.4)
else()
    message(FATAL_ERROR "BRELPRINTERTOOL_QT is \"${BRELPRINTERTOOL_QT}\"; choose 5 or 6")
endif()
set(qt Qt${BRELPRINTERTOOL_QT})

# brelprintertool_find_qt(components...)
# Finds components of the chosen Qt, for the current folder and those below.
macro(brelprintertool_find_qt)
    find_package(${qt} ${oldestQt} REQUIRED COMPONENTS ${ARGN})
endmacro()
