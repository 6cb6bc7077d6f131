# Fills the host's man page: its options are those that the host itself tells under --help.
# cmake -DHOST=program -DIN=template -DOUT=page -DPROJECT_VERSION=… -Drelease_date=… -P ManPage.cmake
execute_process(COMMAND ${HOST} --help OUTPUT_VARIABLE help COMMAND_ERROR_IS_FATAL ANY)
string(REGEX REPLACE "^.*\nValg:\n(.*)\nStatus: .*$" "\\1" options "${help}")
# roff takes a backslash for its own, a plain hyphen for one to break at, and a line that begins with
# a point or an apostrophe for a request.
string(REPLACE "\\" "\\e" options "${options}")
string(REPLACE "-" "\\-" options "${options}")
string(REGEX REPLACE "(^|\n)([.'])" "\\1\\\\&\\2" options "${options}")
string(REGEX REPLACE "\n+$" "" options "${options}")
configure_file(${IN} ${OUT} @ONLY)
