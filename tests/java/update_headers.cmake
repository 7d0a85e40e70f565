# Takes over the prototypes that differ, so that a change of a Java test alone compiles no C++ file:
#   cmake -DFROM=FOLDER -DTO=FOLDER -P update_headers.cmake
file(GLOB headers RELATIVE ${FROM} ${FROM}/*.h)
file(MAKE_DIRECTORY ${TO})
foreach(header ${headers})
  file(COPY_FILE ${FROM}/${header} ${TO}/${header} ONLY_IF_DIFFERENT)
endforeach()
