# SPDX-License-Identifier: MIT

# cmake -DCHMCMD=... -DFINISH=... -DSOURCE=folder -DRESULT=file -DDIGEST=source -P CompileHelp.cmake
#
# Makes the help file, the same in every folder and at any time, and the source that gives its digest to the
# program. The compiler stores the path of its project file: this one is the same everywhere, and taken out again.
set(work ${RESULT}.work)
file(REMOVE_RECURSE ${work})
file(MAKE_DIRECTORY ${work})
file(GLOB parts ${SOURCE}/*.htm ${SOURCE}/*.css ${SOURCE}/*.png ${SOURCE}/Ninarix.hh?)
file(COPY ${parts} DESTINATION ${work})
file(GLOB pages ${work}/*.htm ${work}/*.hh[ck])
execute_process(COMMAND ${FINISH} entities ${pages} COMMAND_ERROR_IS_FATAL ANY)

# Its return code says nothing: what it made does.
execute_process(COMMAND ${CHMCMD} /proc/self/cwd/Ninarix.hhp WORKING_DIRECTORY ${work}
  OUTPUT_VARIABLE said ERROR_VARIABLE said RESULT_VARIABLE ignored)
execute_process(COMMAND ${FINISH} finish ${work}/Ninarix.chm RESULT_VARIABLE failed)
if(failed)
  file(REMOVE_RECURSE ${work})
  message(FATAL_ERROR "The help file could not be made.\n${said}")
endif()
file(SHA256 ${work}/Ninarix.chm digest)
file(WRITE ${DIGEST} "#include \"platform/qt/help/HelpDigest.h\"

QByteArray HelpDigest::BuiltIn() {
    return QByteArrayLiteral(\"${digest}\");
}
")
file(RENAME ${work}/Ninarix.chm ${RESULT})
file(REMOVE_RECURSE ${work})
