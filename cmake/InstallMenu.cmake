# Puts the program into the menu: of the whole computer when root installs, else of the user alone. The folder is known
# only now, since `cmake --install --prefix` may name another one than the configuration did.
execute_process(COMMAND id -u OUTPUT_VARIABLE user OUTPUT_STRIP_TRAILING_WHITESPACE)
if(user STREQUAL "0")
  set(menu /usr/local/share/applications)
elseif(DEFINED ENV{XDG_DATA_HOME})
  set(menu $ENV{XDG_DATA_HOME}/applications)
else()
  set(menu $ENV{HOME}/.local/share/applications)
endif()
set(entry $ENV{DESTDIR}${menu}/tavolino.desktop)
message(STATUS "Installing: ${entry}")
configure_file(${CMAKE_CURRENT_LIST_DIR}/tavolino.desktop.in ${entry} @ONLY)
