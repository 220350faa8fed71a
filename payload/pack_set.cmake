# One build step: ludax-pack checks and packs a set. When the set is refused, the program built
# from the previous set is removed, so the build tree never holds one that looks current.
#   cmake -DPACK_TOOL=... -DSET=... -DMANIFEST=... -DOUTPUT=... -DPROGRAM=Ludax.exe -DBUILD_ROOT=... -P pack_set.cmake
execute_process(COMMAND ${PACK_TOOL} pack ${SET} ${MANIFEST} ${OUTPUT} RESULT_VARIABLE status)
if(NOT status EQUAL 0)
  file(GLOB_RECURSE stale "${BUILD_ROOT}/${PROGRAM}")
  foreach(program ${stale})
    file(REMOVE "${program}")
    message(STATUS "Removed ${program}, built from the previous set")
  endforeach()
  message(FATAL_ERROR "The set ${SET} was refused; correct what is listed above and build again.")
endif()
