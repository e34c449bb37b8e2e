# What the program is called: for the properties of the Windows program and for the package. Version and description are
# those of project(), the copyright is the licence's.

set(LETTERLIFT_PRODUCT "Letterlift")
set(LETTERLIFT_PUBLISHER "Letterlift")
file(STRINGS "${PROJECT_SOURCE_DIR}/LICENSE" LETTERLIFT_COPYRIGHT REGEX "^Copyright " LIMIT_COUNT 1)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/LICENSE")
if(NOT LETTERLIFT_COPYRIGHT)
    message(FATAL_ERROR "LICENSE has no line that begins with \"Copyright \"")
endif()

# Windows wants four numbers.
set(LETTERLIFT_VERSION_NUMBERS "${PROJECT_VERSION_MAJOR},${PROJECT_VERSION_MINOR},${PROJECT_VERSION_PATCH},0")

# The package's file, without suffix, and the one folder in it.
set(LETTERLIFT_PACKAGE "letterlift-${PROJECT_VERSION}-win64")
