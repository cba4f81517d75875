# What vantrel tells of itself, made by it: the pages of keys, the completions, and the manual page where scdoc is
# there. docs/keys.md is checked in, and brought up to date by the target "pages".
set(VANTREL_PAGES ${PROJECT_BINARY_DIR}/pages)

# made_page(FILE INPUT COMMAND...): a file in there that holds what the command prints.
function(made_page file input)
  list(JOIN ARGN " " command)
  add_custom_command(OUTPUT ${VANTREL_PAGES}/${file} DEPENDS ${input} VERBATIM WORKING_DIRECTORY ${VANTREL_PAGES}
                     COMMAND sh -c "${command} > ${file}")
  set_property(GLOBAL APPEND PROPERTY VANTREL_MADE_PAGES ${VANTREL_PAGES}/${file})
endfunction()

function(vantrel_pages)
  file(MAKE_DIRECTORY ${VANTREL_PAGES})
  made_page(keys.md vantrel ../vantrel keys --markdown)
  made_page(keys.html vantrel ../vantrel keys --html)
  made_page(bash vantrel ../vantrel completion bash)
  made_page(zsh vantrel ../vantrel completion zsh)
  made_page(fish vantrel ../vantrel completion fish)
  find_program(SCDOC scdoc)
  if(SCDOC)
    made_page(vantrel.1.scd vantrel ../vantrel manual)
    made_page(vantrel.1.gz ${VANTREL_PAGES}/vantrel.1.scd ${SCDOC} < vantrel.1.scd | gzip -9n)
    install(FILES ${VANTREL_PAGES}/vantrel.1.gz DESTINATION share/man/man1)
    install(FILES ${VANTREL_PAGES}/vantrel.1.gz DESTINATION share/man/man1 RENAME VantrelCmd.1.gz)
  endif()
  get_property(pages GLOBAL PROPERTY VANTREL_MADE_PAGES)
  add_custom_target(made_pages ALL DEPENDS ${pages})
  add_custom_target(pages DEPENDS ${pages}
                    COMMAND ${CMAKE_COMMAND} -E copy ${VANTREL_PAGES}/keys.md ${PROJECT_SOURCE_DIR}/docs/keys.md)

  install(FILES ${VANTREL_PAGES}/bash DESTINATION share/bash-completion/completions RENAME vantrel)
  install(FILES ${VANTREL_PAGES}/zsh DESTINATION share/zsh/site-functions RENAME _vantrel)
  install(FILES ${VANTREL_PAGES}/fish DESTINATION share/fish/vendor_completions.d RENAME vantrel.fish)
  install(FILES ${VANTREL_PAGES}/keys.html DESTINATION share/doc/vantrel)
endfunction()
