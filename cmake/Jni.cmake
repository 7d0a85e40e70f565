# The JNI headers of the build machine's JDK, as INTERFACE target corvane_jni.
#
# They are headers for the build machine's system; for Windows on x86-64 they differ only in how an
# exported function is marked, so JNIEXPORT is given here.

find_package(Java 17 REQUIRED COMPONENTS Development)

file(REAL_PATH "${Java_JAVAC_EXECUTABLE}" javac)
cmake_path(GET javac PARENT_PATH java_bin)
cmake_path(GET java_bin PARENT_PATH java_home)
find_path(CORVANE_JNI_INCLUDE jni.h
          PATHS "${java_home}/include" NO_DEFAULT_PATH NO_CMAKE_FIND_ROOT_PATH REQUIRED)
find_path(CORVANE_JNI_MD_INCLUDE jni_md.h
          PATHS "${java_home}/include/win32" "${java_home}/include/linux" "${java_home}/include/darwin"
          NO_DEFAULT_PATH NO_CMAKE_FIND_ROOT_PATH REQUIRED)

add_library(corvane_jni INTERFACE)
target_include_directories(corvane_jni SYSTEM INTERFACE ${CORVANE_JNI_INCLUDE} ${CORVANE_JNI_MD_INCLUDE})
if(NOT MSVC)
  target_compile_definitions(corvane_jni INTERFACE "JNIEXPORT=__declspec(dllexport)")
endif()
