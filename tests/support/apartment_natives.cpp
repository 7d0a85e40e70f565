#include <com_corvane_testing_Apartment.h>
#include <windows.h>

#include <objbase.h>

#include <stdexcept>

#include "java_text.h"

// The native of com.corvane.testing.Apartment; what it does is said there.

JNIEXPORT void JNICALL Java_com_corvane_testing_Apartment_start(JNIEnv* env,
                                                                jclass,
                                                                jboolean multithreaded) {
  bed::orThrow(env, [&] {
    const DWORD model =
        multithreaded != JNI_FALSE ? COINIT_MULTITHREADED : COINIT_APARTMENTTHREADED;
    if (FAILED(CoInitializeEx(nullptr, model))) {
      throw std::runtime_error("COM is started otherwise on this thread");
    }
  });
}
