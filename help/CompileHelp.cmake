# cmake -DCHMCMD=... -DSEAL=... -DSOURCE=folder -DRESULT=file -P CompileHelp.cmake
#
# The compiler stores the folder that it works in, and ships it: so it works in a folder that says nothing
# about the machine. The random part lets several builds run at once.
string(RANDOM LENGTH 8 unique)
set(work /tmp/ninarix-help-${unique})
file(MAKE_DIRECTORY ${work})
file(GLOB parts ${SOURCE}/*.htm ${SOURCE}/*.css ${SOURCE}/*.png ${SOURCE}/Ninarix.hh?)
file(COPY ${parts} DESTINATION ${work})

# Its return code says nothing: what it made does.
execute_process(COMMAND ${CHMCMD} Ninarix.hhp WORKING_DIRECTORY ${work}
  OUTPUT_VARIABLE said ERROR_VARIABLE said RESULT_VARIABLE ignored)
execute_process(COMMAND ${SEAL} ${work}/Ninarix.chm RESULT_VARIABLE failed)
if(failed)
  file(REMOVE_RECURSE ${work})
  message(FATAL_ERROR "The help file could not be made.\n${said}")
endif()
file(COPY_FILE ${work}/Ninarix.chm ${RESULT}.new)
file(RENAME ${RESULT}.new ${RESULT})
file(REMOVE_RECURSE ${work})
