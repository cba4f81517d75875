# cpack -G DEB: a package of both programs, with what Debian wants to find in it.
set(changelog ${PROJECT_BINARY_DIR}/pages/changelog.gz)
add_custom_command(OUTPUT ${changelog} DEPENDS ${PROJECT_SOURCE_DIR}/packaging/changelog VERBATIM
                   COMMAND ${CMAKE_COMMAND} -E make_directory ${PROJECT_BINARY_DIR}/pages
                   COMMAND sh -c "gzip -9nc \"$1\" > \"$2\"" sh ${PROJECT_SOURCE_DIR}/packaging/changelog ${changelog})
add_custom_target(changelog ALL DEPENDS ${changelog})
install(FILES ${changelog} packaging/copyright DESTINATION share/doc/vantrel)
install(FILES packaging/lintian-overrides DESTINATION share/lintian/overrides RENAME vantrel)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME vantrel)
set(CPACK_PACKAGE_VENDOR "Vantrel")
set(CPACK_PACKAGE_CONTACT "Vantrel <support@vantrel.example>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "formatter for C and C++ source code")
string(CONCAT CPACK_PACKAGE_DESCRIPTION
       "vantrel lays out C and C++ sources by a scheme: where braces stand, what is\n"
       "indented, where blanks and line breaks go. It changes white space and nothing\n"
       "else, and proves that in every run. It formats trees, changed lines, and what\n"
       "editors send.")
set(CPACK_DEBIAN_PACKAGE_SECTION devel)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE "https://vantrel.example")
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ
                                                WORLD_EXECUTE)
include(CPack)
