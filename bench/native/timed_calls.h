#pragma once

#include <jni.h>
#include <windows.h>

/// The performance counter's ticks.
inline LONGLONG ticksNow() {
  LARGE_INTEGER ticks;
  QueryPerformanceCounter(&ticks);
  return ticks.QuadPart;
}

/// The error of a call that is over just now.
inline DWORD errorUnless(BOOL done) {
  return done != FALSE ? ERROR_SUCCESS : GetLastError();
}

/// The nanoseconds that so many calls took, -1 when one of them failed. A call returns 0 or its
/// error.
template <class Call>
jlong timed(jint calls, const Call& call) {
  LARGE_INTEGER perSecond;
  QueryPerformanceFrequency(&perSecond);
  const LONGLONG start = ticksNow();
  for (jint i = 0; i < calls; ++i) {
    if (call() != ERROR_SUCCESS) {
      return -1;
    }
  }
  return (ticksNow() - start) * 1'000'000'000 / perSecond.QuadPart;
}
