#include <com_corvane_testing_Apartment.h>
#include <windows.h>

#include <objbase.h>

#include <stdexcept>

#include "java_text.h"

// The native of com.corvane.testing.Apartment; what it does is said there.

JNIEXPORT void JNICALL Java_com_corvane_testing_Apartment_joinMultithreaded(JNIEnv* env, jclass) {
  bed::orThrow(env, [] {
    if (FAILED(CoInitializeEx(nullptr, COINIT_MULTITHREADED))) {
      throw std::runtime_error("COM is started otherwise on this thread");
    }
  });
}
