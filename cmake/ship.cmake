# vantrel_ship(PROGRAM): the program stands at the top of the build folder with the shipped schemes beside it,
# where it looks for them. Installed, both are in lib/vantrel, and bin has a link: the program follows it home.
function(vantrel_ship program)
  set_target_properties(${program} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR})

  file(GLOB schemes CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/schemes/*.vts)
  set(copies)
  foreach(scheme ${schemes})
    cmake_path(GET scheme FILENAME name)
    add_custom_command(OUTPUT ${PROJECT_BINARY_DIR}/${name} DEPENDS ${scheme}
                       COMMAND ${CMAKE_COMMAND} -E copy ${scheme} ${PROJECT_BINARY_DIR}/${name})
    list(APPEND copies ${PROJECT_BINARY_DIR}/${name})
  endforeach()
  add_custom_target(schemes DEPENDS ${copies})
  add_dependencies(${program} schemes)

  install(TARGETS ${program} DESTINATION lib/vantrel)
  install(FILES ${schemes} DESTINATION lib/vantrel)
  install(CODE "
    set(bin \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/bin\")
    file(MAKE_DIRECTORY \"\${bin}\")
    file(CREATE_LINK ../lib/vantrel/${program} \"\${bin}/${program}\" SYMBOLIC)")
endfunction()
