# The sets of a later build, as an organiser makes one: the shipped sets, with Counter-Strike 1.6's
# config.cfg changed (a line added) and one file added.
#   cmake -DSOURCE=<payload folder> -DOUTPUT=<folder> -P next_sets.cmake
file(COPY ${SOURCE}/cs16 ${SOURCE}/css ${SOURCE}/cs16.manifest ${SOURCE}/css.manifest DESTINATION ${OUTPUT})
# Appended, not read and written again: CMake reads text without its CRs.
file(APPEND ${OUTPUT}/cs16/config.cfg "echo \"LUDAX config, second edition\"\r\n")
file(WRITE ${OUTPUT}/cs16/ludax_news.txt "LUDAX LAN: the second edition of the tournament's configuration.\r\n")
file(APPEND ${OUTPUT}/cs16.manifest "ludax_news.txt\n")
