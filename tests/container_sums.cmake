# The SHA-256 of each container in FOLDER, as CMake's own file(SHA256) computes it, written to
# FOLDER/container-sums.txt ("cs16 <hex>", "css <hex>"): the tests' oracle for the name a build
# gives itself, not the program's own sum.
#   cmake -DFOLDER=<folder holding cs16.container and css.container> -P container_sums.cmake
set(sums "")
foreach(game cs16 css)
  file(SHA256 ${FOLDER}/${game}.container sum)
  string(APPEND sums "${game} ${sum}\n")
endforeach()
file(WRITE ${FOLDER}/container-sums.txt.new "${sums}")
file(COPY_FILE ${FOLDER}/container-sums.txt.new ${FOLDER}/container-sums.txt ONLY_IF_DIFFERENT)
