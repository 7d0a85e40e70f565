# compile_java(CLASSES RELEASE r CLASS_PATH entry... SOURCES file... DEPENDS target-or-file... COMMENT text):
# what is not part of the library goes into the folder CLASSES by this; CLASSES.stamp says when.
function(compile_java classes)
  cmake_parse_arguments(PARSE_ARGV 1 java "" "RELEASE;COMMENT" "CLASS_PATH;SOURCES;DEPENDS")
  set(separator ":")
  if(CMAKE_HOST_WIN32)
    set(separator "\\;")
  endif()
  list(JOIN java_CLASS_PATH ${separator} class_path)
  add_custom_command(
    OUTPUT ${classes}.stamp
    COMMAND ${CMAKE_COMMAND} -E rm -rf ${classes}
    COMMAND ${Java_JAVAC_EXECUTABLE} --release ${java_RELEASE} -Xlint:all,-processing,-options -Werror
            -encoding UTF-8 -cp "${class_path}" -d ${classes} ${java_SOURCES}
    COMMAND ${CMAKE_COMMAND} -E touch ${classes}.stamp
    DEPENDS ${java_SOURCES} ${java_DEPENDS}
    COMMENT "${java_COMMENT}"
    VERBATIM)
endfunction()
