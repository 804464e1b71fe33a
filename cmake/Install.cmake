# cmake --install build, by the system's hierarchy of folders. The packages take one component each (debian/rules).

# Where the system looks for units and rules; /lib in a package.
set(NORDKEEP_SYSTEM_LIB lib CACHE STRING "Folder of systemd and udev")
set(shared ${CMAKE_INSTALL_DATADIR}/nordkeep)
install(DIRECTORY languages/ templates/ DESTINATION ${shared} COMPONENT common)
install(TARGETS nordkeepd RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT server)
install(TARGETS nordkeep RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT window)
install(TARGETS nordkeep-send nordkeep-export NKCopy RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT tools)
install(PROGRAMS tools/nordkeep-backup DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT tools)
install(PROGRAMS tools/make-link-certificates DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/nordkeep-tools/examples COMPONENT tools)

install(FILES packaging/nordkeep.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications COMPONENT window)
set(NORDKEEP_HOMEPAGE https://nordkeep.invalid CACHE STRING "Where the project is to be found")
# The day of the change log, so that two builds are the same.
file(STRINGS debian/changelog day REGEX "^ -- ")
list(GET day 0 day)
string(REGEX REPLACE "^.*>  " "" day "${day}")
execute_process(COMMAND date --utc "--date=${day}" +%F OUTPUT_VARIABLE NORDKEEP_RELEASE_DATE
  OUTPUT_STRIP_TRAILING_WHITESPACE)
configure_file(packaging/nordkeep.metainfo.xml.in ${CMAKE_BINARY_DIR}/papers/com.corvane.nordkeep.metainfo.xml @ONLY)
install(FILES ${CMAKE_BINARY_DIR}/papers/com.corvane.nordkeep.metainfo.xml
  DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo COMPONENT window)
install(FILES packaging/nordkeep.svg DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps COMPONENT window)

# The service of the package runs under an account of its own (packaging/systemd/nordkeep.sysusers); "nordkeep /I" fills the
# same text in for any other program and folder.
function(nordkeep_unit name description_end path account)
  file(READ packaging/systemd/nordkeep.service.in unit)
  string(REPLACE "@COMMAND@" "\"${CMAKE_INSTALL_FULL_BINDIR}/nordkeepd\" /RunAsService \"/PATH:${path}\"" unit "${unit}")
  string(REPLACE "@ACCOUNT@" "User=nordkeep\nGroup=nordkeep\n${account}" unit "${unit}")
  string(REPLACE "@HIDING@" "ProtectHome=yes\nPrivateTmp=yes" unit "${unit}")
  string(REGEX REPLACE "(Description=[^\n]*)" "\\1${description_end}" unit "${unit}")
  file(CONFIGURE OUTPUT ${CMAKE_BINARY_DIR}/units/${name} CONTENT "${unit}" @ONLY)
  install(FILES ${CMAKE_BINARY_DIR}/units/${name} DESTINATION ${NORDKEEP_SYSTEM_LIB}/systemd/system COMPONENT server)
endfunction()
nordkeep_unit(nordkeep.service "" ${NORDKEEP_STATE_FOLDER} "StateDirectory=nordkeep\nStateDirectoryMode=0750")
nordkeep_unit(nordkeep@.service " (centre %i)" ${NORDKEEP_STATE_FOLDER}-%i
  "StateDirectory=nordkeep-%i\nStateDirectoryMode=0750")
install(FILES packaging/systemd/nordkeep.conf DESTINATION lib/sysusers.d COMPONENT server)
install(FILES packaging/udev/60-nordkeep-serial.rules DESTINATION ${NORDKEEP_SYSTEM_LIB}/udev/rules.d COMPONENT server)
install(FILES packaging/systemd/on-failure.conf DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/nordkeep-server/examples
  COMPONENT server)
set(doc ${CMAKE_INSTALL_DATADIR}/doc/nordkeep-doc)
install(DIRECTORY docs/ DESTINATION ${doc} COMPONENT doc PATTERN make-pictures EXCLUDE)
install(FILES README.md CHANGELOG.md SECURITY.md DESTINATION ${doc} COMPONENT doc)
install(DIRECTORY sample DESTINATION ${doc}/examples COMPONENT doc)
