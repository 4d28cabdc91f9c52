# Tests of programs for another processor, on this one.
#
# Each program is started by a script of its name, which has the emulator run it: tests, shells and the programs themselves then
# start it by its path alone, whether or not the kernel knows the emulator.
if(CMAKE_CROSSCOMPILING_EMULATOR)
  set(baseapi_programs ${PROJECT_BINARY_DIR}/emulated)
  set_target_properties(Python3::Interpreter PROPERTIES CROSSCOMPILING_EMULATOR "")  # one of this machine's own
else()
  set(baseapi_programs ${CMAKE_RUNTIME_OUTPUT_DIRECTORY})
endif()

# baseapi_startable(<variable> <target>): the path that starts the program here; ${baseapi_programs}/<target> for those of the project.
function(baseapi_startable variable target)
  set(path $<TARGET_FILE:${target}>)
  if(CMAKE_CROSSCOMPILING_EMULATOR)
    list(JOIN CMAKE_CROSSCOMPILING_EMULATOR "' '" emulator)
    set(path ${baseapi_programs}/${target})
    file(GENERATE OUTPUT ${path}
      CONTENT "#!/bin/sh\nexec '${emulator}' -0 \"$0\" '$<TARGET_FILE:${target}>' \"$@\"\n"
      FILE_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE)
  endif()
  set(${variable} ${path} PARENT_SCOPE)
endfunction()

# The test cases that emulation cannot run, each with its reason. There are none so far.
set(baseapi_not_emulated)
