# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT

# Included by the project that script/mutants builds. Every target asks this library which mutant is chosen.
add_library(mutants SHARED ${CMAKE_CURRENT_LIST_DIR}/MutantIs.cpp)
link_libraries(mutants)
