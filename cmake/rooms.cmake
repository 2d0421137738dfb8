# sr_room(NAME SOURCES... KNOWS...): a room of the module, as a static library sr_NAME. It finds the
# headers of the rooms that it knows and no others: they are linked into a folder of its own, which
# stands in for the tree on its include path.
set(SR_ROOMS "")
function(sr_room name)
  cmake_parse_arguments(ROOM "" "" "SOURCES;KNOWS;LIBRARIES" ${ARGN})
  set(view ${CMAKE_BINARY_DIR}/rooms/${name})
  file(REMOVE_RECURSE ${view})
  file(MAKE_DIRECTORY ${view})
  foreach(known ${name} ${ROOM_KNOWS} outside resource platform)
    file(CREATE_LINK ${CMAKE_SOURCE_DIR}/${known} ${view}/${known} SYMBOLIC)
  endforeach()
  add_library(sr_${name} STATIC ${ROOM_SOURCES})
  target_include_directories(sr_${name} PRIVATE ${view})
  list(TRANSFORM ROOM_KNOWS PREPEND sr_ OUTPUT_VARIABLE known_libraries)
  target_link_libraries(sr_${name} PUBLIC sr_flags ${known_libraries} ${ROOM_LIBRARIES})
  # Only what is marked leaves the module. The sanitized build shares compiled headers between
  # targets, which asks for one visibility.
  target_compile_definitions(sr_${name} PRIVATE SR_BUILD)
  if(NOT SR_SANITIZE)
    set_target_properties(sr_${name} PROPERTIES CXX_VISIBILITY_PRESET hidden
                                                VISIBILITY_INLINES_HIDDEN ON)
  endif()
  set(SR_ROOMS ${SR_ROOMS} sr_${name} PARENT_SCOPE)
endfunction()
