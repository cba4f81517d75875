# vantrel_ship(PROGRAM...): the programs stand at the top of the build folder with the shipped schemes beside them,
# where they look for them. Installed, all are in lib/vantrel, and bin has links: a program follows its own home.
function(vantrel_ship)
  file(GLOB schemes CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/schemes/*.vts)
  set(copies)
  foreach(scheme ${schemes})
    cmake_path(GET scheme FILENAME name)
    add_custom_command(OUTPUT ${PROJECT_BINARY_DIR}/${name} DEPENDS ${scheme}
                       COMMAND ${CMAKE_COMMAND} -E copy ${scheme} ${PROJECT_BINARY_DIR}/${name})
    list(APPEND copies ${PROJECT_BINARY_DIR}/${name})
  endforeach()
  add_custom_target(schemes DEPENDS ${copies})
  install(FILES ${schemes} DESTINATION lib/vantrel)

  foreach(program ${ARGN})
    set_target_properties(${program} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR})
    add_dependencies(${program} schemes)
    install(TARGETS ${program} DESTINATION lib/vantrel)
    install(CODE "
      set(bin \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/bin\")
      file(MAKE_DIRECTORY \"\${bin}\")
      file(CREATE_LINK ../lib/vantrel/${program} \"\${bin}/${program}\" SYMBOLIC)")
  endforeach()
endfunction()
