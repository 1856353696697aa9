# The one version of the whole project, from the file VERSION at the top of
# the tree ("MAJOR.MINOR.PATCH"): the release's zip names, the executable's
# version resource and the member's guide all show it.
#   include(cmake/version.cmake)  ->  V2_VERSION, V2_VERSION_MAJOR, _MINOR,
#                                     _PATCH
file(STRINGS ${CMAKE_CURRENT_LIST_DIR}/../VERSION V2_VERSION LIMIT_COUNT 1)
if(NOT V2_VERSION MATCHES "^([0-9]+)\\.([0-9]+)\\.([0-9]+)$")
  message(FATAL_ERROR "VERSION must hold MAJOR.MINOR.PATCH, not '${V2_VERSION}'")
endif()
set(V2_VERSION_MAJOR ${CMAKE_MATCH_1})
set(V2_VERSION_MINOR ${CMAKE_MATCH_2})
set(V2_VERSION_PATCH ${CMAKE_MATCH_3})
# A new version configures the build again.
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS
             ${CMAKE_CURRENT_LIST_DIR}/../VERSION)
