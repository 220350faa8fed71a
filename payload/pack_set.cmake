# One build step: ludax-pack checks and packs a set. When the set is refused, the program built
# from the previous set is removed, so the build tree never holds one that looks current.
# With LUDAX_FINDINGS_LAST in the environment (make's build, tools/pack/build-with-findings-last)
# the check's findings go to FINDINGS instead, to be printed after the build's last line.
#   cmake -DPACK_TOOL=... -DSET=... -DMANIFEST=... -DOUTPUT=... -DFINDINGS=... -DPROGRAM=Ludax.exe -DBUILD_ROOT=... -P pack_set.cmake
if(DEFINED ENV{LUDAX_FINDINGS_LAST})
  execute_process(COMMAND ${PACK_TOOL} pack ${SET} ${MANIFEST} ${OUTPUT} RESULT_VARIABLE status ERROR_FILE ${FINDINGS})
  set(listed "listed at the end of the build")
else()
  execute_process(COMMAND ${PACK_TOOL} pack ${SET} ${MANIFEST} ${OUTPUT} RESULT_VARIABLE status)
  set(listed "listed above")
endif()
if(NOT status EQUAL 0)
  file(GLOB_RECURSE stale "${BUILD_ROOT}/${PROGRAM}")
  foreach(program ${stale})
    file(REMOVE "${program}")
    if(DEFINED ENV{LUDAX_FINDINGS_LAST})
      file(APPEND ${FINDINGS} "Removed ${program}, built from the previous set\n")
    else()
      message(STATUS "Removed ${program}, built from the previous set")
    endif()
  endforeach()
  message(FATAL_ERROR "The set ${SET} was refused; correct what is ${listed} and build again.")
endif()
