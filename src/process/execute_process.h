#pragma once

#include <jni.h>

#include "process/process_request.h"

namespace corvane {

/// How it went: 0, or the code that Java is told, with the error of Windows behind it, or 0 where
/// there is none.
struct ExecutionResult {
  jint code = 0;
  DWORD error = 0;
};

/// Runs what is asked for and waits for its end: as the user of this process, or as another one
/// when the request names any. Where that fails, the log is told, and on Windows 2000 another way
/// is tried. Throws JavaException.
ExecutionResult executeProcess(const ProcessRequest& request, const WarningLog& log);

}  // namespace corvane
