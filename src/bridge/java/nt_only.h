#pragma once

#include <jni.h>

#include "bridge/java/service_exception.h"
#include "bridge/win32/platform.h"

namespace corvane {

/// For what Windows 95, 98 and ME do not have: raises that it is not supported there, and returns
/// the default value of the type. Elsewhere does the work. For use inside the native frame.
template <class Work>
auto onNTFamily(JNIEnv* env, const Work& work) -> decltype(work()) {
  if (isWindows9x()) {
    throwNotSupported(env);
    return decltype(work())();
  }
  return work();
}

}  // namespace corvane
