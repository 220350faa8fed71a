# The SHA-256 of each container in FOLDER and of each file of the sets in SETS, as CMake's own
# file(SHA256) computes them, written to FOLDER/container-sums.txt ("cs16 <hex>", "css <hex>",
# then "cs16/<name> <hex>" for each file in its manifest): the tests' oracle for the name a build
# gives itself and for what its record says it wrote, not the program's own sums.
#   cmake -DFOLDER=<folder of cs16.container, css.container> -DSETS=<folder of the sets> -P container_sums.cmake
set(sums "")
foreach(game cs16 css)
  file(SHA256 ${FOLDER}/${game}.container sum)
  string(APPEND sums "${game} ${sum}\n")
endforeach()
foreach(game cs16 css)
  file(STRINGS ${SETS}/${game}.manifest names)
  foreach(name ${names})
    string(STRIP "${name}" name)
    if(NOT name STREQUAL "")
      file(SHA256 ${SETS}/${game}/${name} sum)
      string(APPEND sums "${game}/${name} ${sum}\n")
    endif()
  endforeach()
endforeach()
file(WRITE ${FOLDER}/container-sums.txt.new "${sums}")
file(COPY_FILE ${FOLDER}/container-sums.txt.new ${FOLDER}/container-sums.txt ONLY_IF_DIFFERENT)
