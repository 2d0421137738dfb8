# What `cmake --install` lays natively: the programs, their libraries in a folder of their own with the
# resource library, which is found beside them, and the completion. Programs find their libraries from
# where they lie, so what is installed can be moved as a whole.
include(GNUInstallDirs)
set(SR_PRIVATE_LIBDIR ${CMAKE_INSTALL_LIBDIR}/sr)
set(programs srfind srprops srsample)
set(libraries Sr Md PS BLx BLxShared platform)
file(RELATIVE_PATH from_programs ${CMAKE_INSTALL_FULL_BINDIR}
     ${CMAKE_INSTALL_FULL_LIBDIR}/sr)
set_target_properties(${programs} PROPERTIES INSTALL_RPATH "$ORIGIN/${from_programs}")
set_target_properties(${libraries} PROPERTIES INSTALL_RPATH "$ORIGIN")
install(TARGETS ${programs} RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(TARGETS ${libraries} LIBRARY DESTINATION ${SR_PRIVATE_LIBDIR})
install(FILES ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/SrRes.dll DESTINATION ${SR_PRIVATE_LIBDIR})
install(FILES host/completion/srfind.bash RENAME srfind
        DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions)
